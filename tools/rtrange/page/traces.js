// The traces of a plot: values over time, and where their lines break.
"use strict";

const points_per_bucket = 64;

/** The lowest and the highest value of each bucket; Infinity and -Infinity where all are NaN. */
function summarise(values) {
  const buckets = Math.ceil(values.length / points_per_bucket);
  const low = new values.constructor(buckets).fill(Infinity);
  const high = new values.constructor(buckets).fill(-Infinity);
  for (let i = 0; i < values.length; ++i) {
    const bucket = Math.floor(i / points_per_bucket);
    if (values[i] < low[bucket]) low[bucket] = values[i];
    if (values[i] > high[bucket]) high[bucket] = values[i];
  }
  return { low, high };
}

/** The indices of values before which the line breaks: after gaps, after NaN, at wraps of an angle. */
function find_breaks(times, values, is_angle) {
  const breaks = new Set(rows_after_gaps(times));
  for (let i = 1; i < values.length; ++i) {
    const after_nothing = Number.isNaN(values[i - 1]) && !Number.isNaN(values[i]);
    if (after_nothing || (is_angle && Math.abs(values[i] - values[i - 1]) > 180)) breaks.add(i);
  }
  return Uint32Array.from(breaks).sort();
}

function make_trace(unit, label, times, values, is_angle) {
  return {
    unit,
    label,
    is_angle,
    times,
    values,
    breaks: find_breaks(times, values, is_angle),
    summary: summarise(values),
  };
}

/** The index of the first element that is not below the value. */
function lower_bound(sorted, value, begin = 0, end = sorted.length) {
  while (begin < end) {
    const middle = (begin + end) >> 1;
    if (sorted[middle] < value) begin = middle + 1;
    else end = middle;
  }
  return begin;
}

/** The index of the point nearest to a time, or -1 in a break and outside of the trace. */
function point_at(trace, time) {
  const { times, breaks } = trace;
  const next = lower_bound(times, time);
  if (next === 0) return times[0] === time ? 0 : -1;
  if (next === times.length) return -1;
  if (breaks[lower_bound(breaks, next)] === next && times[next] !== time) return -1;
  return time - times[next - 1] < times[next] - time ? next - 1 : next;
}

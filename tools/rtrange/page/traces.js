// The traces of a plot: values over time, and where their lines break.
"use strict";

const points_per_bucket = 64;

/** The rows before new ones by which gaps among the new ones are found. */
const rows_for_usual_interval = 200;

/** Updates the lowest and the highest value of each bucket from a point on; Infinity and -Infinity where all are NaN. */
function summarise({ values, summary: { low, high } }, begin) {
  for (let bucket = Math.floor(begin / points_per_bucket); bucket * points_per_bucket < values.length; ++bucket) {
    const end = Math.min((bucket + 1) * points_per_bucket, values.length);
    low[bucket] = Infinity;
    high[bucket] = -Infinity;
    for (let i = bucket * points_per_bucket; i < end; ++i) {
      if (values[i] < low[bucket]) low[bucket] = values[i];
      if (values[i] > high[bucket]) high[bucket] = values[i];
    }
  }
}

/** Adds the indices of values, from a point on, before which the line breaks: after gaps, after NaN, at wraps of an angle. */
function add_breaks({ times, values, breaks, is_angle }, begin, least_gap = 0) {
  const recent = times.subarray(Math.max(0, begin - rows_for_usual_interval));
  const longest = Math.max(longest_interval(recent), least_gap);
  for (let i = Math.max(begin, 1); i < values.length; ++i) {
    const after_gap = times[i] - times[i - 1] > longest;
    const after_nothing = Number.isNaN(values[i - 1]) && !Number.isNaN(values[i]);
    if (after_gap || after_nothing || (is_angle && Math.abs(values[i] - values[i - 1]) > 180)) breaks.push(i);
  }
}

function make_trace(unit, label, times, values, is_angle, least_gap) {
  const trace = { unit, label, is_angle, times, values, breaks: [], summary: { low: [], high: [] } };
  add_breaks(trace, 0, least_gap);
  summarise(trace, 0);
  return trace;
}

/** Gives a trace columns that begin with those it has. No pause among the others is a gap below `least_gap`, in seconds. */
function extend_trace(trace, times, values, least_gap) {
  const begin = trace.times.length;
  Object.assign(trace, { times, values });
  add_breaks(trace, begin, least_gap);
  summarise(trace, begin);
}

/** Gives a trace columns without its first `count` points, which must be whole buckets. */
function shorten_trace(trace, count, times, values) {
  const first = lower_bound(trace.breaks, count + 1);
  const breaks = trace.breaks.slice(first).map((point) => point - count);
  for (const bounds of [trace.summary.low, trace.summary.high]) bounds.splice(0, count / points_per_bucket);
  Object.assign(trace, { times, values, breaks });
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

// Reduces traces to as many points as the screen can show. Keeps every peak.
"use strict";

/** The lowest and the highest of the values [begin, end), from the summaries of whole buckets. */
function extremes(trace, begin, end) {
  const { values, summary } = trace;
  let low = Infinity;
  let high = -Infinity;
  const scan = (from, to, lows, highs) => {
    for (let i = from; i < to; ++i) {
      if (lows[i] < low) low = lows[i];
      if (highs[i] > high) high = highs[i];
    }
  };
  const first_bucket = Math.ceil(begin / points_per_bucket);
  const end_bucket = Math.floor(end / points_per_bucket);
  if (first_bucket >= end_bucket) {
    scan(begin, end, values, values);
  } else {
    scan(begin, first_bucket * points_per_bucket, values, values);
    scan(first_bucket, end_bucket, summary.low, summary.high);
    scan(end_bucket * points_per_bucket, end, values, values);
  }
  return { low, high };
}

/**
 * A trace on a grid of pixel columns. Each column has three elements: one for a break, and one for
 * each of the two extremes, in the order in which the trace reaches them. Undefined elements are
 * skipped; null breaks the line.
 */
function thin(trace, from, to, columns) {
  const { times, values, breaks, is_angle } = trace;
  const result = new Array(3 * columns).fill(undefined);
  const width = (to - from) / columns;
  let begin = lower_bound(times, from);
  let next_break = lower_bound(breaks, begin);
  let last_place = -1;
  let broken = false;
  for (let column = 0; column < columns && begin < times.length; ++column) {
    const end = lower_bound(times, from + (column + 1) * width, begin);
    let visible_begin = begin;
    for (; breaks[next_break] < end; ++next_break) {
      broken = true;
      // The values before and after a wrap would make a line from top to bottom.
      if (is_angle) visible_begin = breaks[next_break];
    }
    const { low, high } = extremes(trace, visible_begin, end);
    if (low <= high) {
      const place = 3 * column;
      if (broken) result.fill(null, last_place + 1, place + 1);
      const falls = values[visible_begin] - low > high - values[visible_begin];
      result[place + 1] = falls ? high : low;
      result[place + 2] = falls ? low : high;
      last_place = place + 2;
      broken = false;
    }
    begin = end;
  }
  return result;
}

function grid(from, to, columns) {
  const width = (to - from) / columns;
  return Float64Array.from(
    { length: 3 * columns },
    (_, i) => from + (Math.floor(i / 3) + [0.1, 0.3, 0.7][i % 3]) * width,
  );
}

/** The points [begin, end) of a trace, with a null in each break. */
function excerpt(trace, begin, end) {
  const times = [];
  const values = [];
  let next_break = lower_bound(trace.breaks, begin + 1);
  for (let i = begin; i < end; ++i) {
    if (trace.breaks[next_break] === i) {
      ++next_break;
      times.push((trace.times[i - 1] + trace.times[i]) / 2);
      values.push(null);
    }
    if (times.length > 0 && times.at(-1) === trace.times[i]) continue; // the plot needs distinct times
    times.push(trace.times[i]);
    values.push(Number.isNaN(trace.values[i]) ? null : trace.values[i]);
  }
  return [times, values];
}

/** The data for plotting the traces: all points if they are few, otherwise thinned to pixel columns. */
function plot_data(traces, from, to, columns) {
  const limits = traces.map(({ times }) => ({
    begin: Math.max(0, lower_bound(times, from) - 1),
    end: Math.min(times.length, lower_bound(times, to) + 1),
  }));
  const points = limits.reduce((sum, { begin, end }) => sum + end - begin, 0);
  if (points > 2 * columns)
    return [grid(from, to, columns), ...traces.map((trace) => thin(trace, from, to, columns))];
  const tables = traces.map((trace, i) => excerpt(trace, limits[i].begin, limits[i].end));
  const expand_nulls = 2;
  return uPlot.join(
    tables,
    tables.map((table) => table.map(() => expand_nulls)),
  );
}

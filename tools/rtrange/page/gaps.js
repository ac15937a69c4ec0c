// Detection of gaps in a sequence of times.
"use strict";

const shortest_gap_s = 0.05;
const gap_over_usual_interval = 5;

/**
 * The usual interval between rows: the upper quartile. The median would be near zero for units that
 * send several packets at a time.
 */
function usual_interval(times) {
  const step = Math.max(1, Math.floor(times.length / 20000));
  const intervals = [];
  for (let i = 1; i < times.length; i += step) intervals.push(times[i] - times[i - 1]);
  intervals.sort((a, b) => a - b);
  return intervals[Math.floor(intervals.length * 0.75)] ?? 0;
}

/** The longest interval that is no gap. */
function longest_interval(times) {
  return Math.max(shortest_gap_s, gap_over_usual_interval * usual_interval(times));
}

/** The indices of the rows that follow a gap. */
function rows_after_gaps(times) {
  const longest = longest_interval(times);
  const rows = [];
  for (let i = 1; i < times.length; ++i) if (times[i] - times[i - 1] > longest) rows.push(i);
  return rows;
}

/** The pauses that all lists of times have in common. */
function pauses_of(lists) {
  const pauses = [];
  for (const i of lists.length > 0 ? rows_after_gaps(lists[0]) : []) {
    const middle = (lists[0][i - 1] + lists[0][i]) / 2;
    const ends = lists.map((times) => {
      const next = lower_bound(times, middle);
      return [times[next - 1] ?? -Infinity, times[next] ?? Infinity];
    });
    const from = Math.max(...ends.map(([before]) => before));
    const to = Math.min(...ends.map(([, after]) => after));
    if (to - from > shortest_gap_s && to - from > (lists[0][i] - lists[0][i - 1]) / 2) pauses.push({ from, to });
  }
  return pauses;
}

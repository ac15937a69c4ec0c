// Judges the data of each unit.
"use strict";

const gap_limit = { name: "gap", words: "missing packets" };

/** Merges periods that overlap or touch. Each has `from`, `to` and the limits that are exceeded. */
function merged_periods(periods) {
  const merged = [];
  for (const { from, to, limits } of periods.sort((a, b) => a.from - b.from)) {
    const last = merged.at(-1);
    if (last && from <= last.to) {
      last.to = Math.max(last.to, to);
      for (const limit of limits) last.limits.add(limit);
    } else {
      merged.push({ from, to, limits: new Set(limits) });
    }
  }
  return merged;
}

/** The periods in which a column exceeds its limit. Unknown values do not. A value lasts until the next row. */
function periods_beyond(limit, values, time) {
  const interval = usual_interval(time);
  const periods = [];
  let begin = -1;
  for (let i = 0; i <= values.length; ++i) {
    const is_bad = i < values.length && !Number.isNaN(values[i]) && limit.is_bad(values[i]);
    if (is_bad && begin < 0) begin = i;
    if (is_bad || begin < 0) continue;
    const to = Math.min(time[i] ?? Infinity, time[i - 1] + Math.max(interval, shortest_gap_s));
    periods.push({ from: time[begin], to, limits: [limit] });
    begin = -1;
  }
  return periods;
}

function gap_periods(time) {
  return rows_after_gaps(time).map((i) => ({ from: time[i - 1], to: time[i], limits: [gap_limit] }));
}

/**
 * The quality columns of a unit's NCOM. In the view "record", a status value is zero until its status
 * channel comes; such zeros are not values.
 */
function quality_columns(stream, view) {
  const columns = {};
  for (const name of Object.keys(stream.values)) {
    if (!quality_plots.some(({ field }) => field === name) && name !== "checksum_error") continue;
    const values = stream.values[name];
    const with_zeros = view === "record" && !["navigation_status", "checksum_error"].includes(name);
    columns[name] = with_zeros ? without_leading_zeros(values) : values;
  }
  return columns;
}

/** Replaces the zeros at the start by NaN. */
function without_leading_zeros(values) {
  const first = values.findIndex((value) => value !== 0 && !Number.isNaN(value));
  return first > 0 ? values.slice().fill(NaN, 0, first) : values;
}

function quality_of(unit, streams, view) {
  const own = streams.filter((stream) => stream.unit === unit);
  const navigation = own.find(({ kind }) => kind === "navigation");
  const time = navigation?.values.time ?? own[0].values.time;
  const columns = navigation ? quality_columns(navigation, view) : {};
  const gaps = own.flatMap(({ values }) => gap_periods(values.time));
  const limits = quality_limits.filter(({ field }) => field in columns);
  const beyond = limits.flatMap((limit) => periods_beyond(limit, columns[limit.field], time));
  const bad = merged_periods([...beyond, ...gaps]);
  const bad_s = bad.reduce((sum, { from, to }) => sum + to - from, 0);
  return { unit, time, columns, gaps: gaps.length, bad, bad_s, whole_s: time.at(-1) - time[0] };
}

/** The quality of the data of each unit; none if no unit has a column to judge it by. */
function qualities_of(streams, view) {
  const units = new Set(streams.filter(({ kind }) => kind !== "rcom").map(({ unit }) => unit));
  const qualities = [...units].map((unit) => quality_of(unit, streams, view));
  return qualities.some(({ columns }) => Object.keys(columns).length > 0) ? qualities : [];
}

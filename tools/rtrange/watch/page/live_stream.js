// The rows of one stream that the page keeps.
"use strict";

const length_s = 600;

/** Older rows come thinned: of each fifth of a second, at least the first and the last. */
const least_gap_of_thinned_s = 0.5;
const longest_span_of_whole_s = 1;

/** Headings from -180 to 180 degrees. */
const centred_heading = "centred_heading";

class LiveStream {
  constructor({ unit, kind, columns }) {
    this.unit = unit;
    this.kind = kind;
    this.names = [...columns];
    if (columns.includes("heading")) this.names.push(centred_heading);
    this.rows = 0;
    this.traces = [];
    this.reserve(1024);
  }

  /** Makes room for rows, with those that there are. */
  reserve(capacity) {
    const old = this.columns;
    this.capacity = capacity;
    this.columns = this.names.map(() => new Float64Array(capacity));
    old?.forEach((column, i) => this.columns[i].set(column.subarray(0, this.rows)));
    this.update_views();
  }

  update_views() {
    this.values = {};
    this.names.forEach((name, i) => (this.values[name] = this.columns[i].subarray(0, this.rows)));
  }

  /** Those of some rows, given by column, that are later than all rows of the stream. */
  new_rows(columns) {
    const latest = this.rows > 0 ? this.values.time[this.rows - 1] : -Infinity;
    const known = columns[0].filter((time) => time <= latest).length;
    return columns.map((column) => column.slice(known));
  }

  /** Appends rows, given by column. */
  append(columns) {
    const count = columns[0].length;
    if (count === 0) return;
    const growth = 1.25;
    if (this.rows + count > this.capacity) this.reserve(Math.ceil(growth * (this.rows + count)));
    columns.forEach((column, i) => {
      for (let row = 0; row < count; ++row) this.columns[i][this.rows + row] = column[row] ?? NaN;
    });
    if (this.names.at(-1) === centred_heading) this.append_centred(columns[this.names.indexOf("heading")]);
    const times = columns[0];
    const is_thinned = times.at(-1) - times[0] > longest_span_of_whole_s;
    this.rows += count;
    this.update_views();
    for (const { trace, column } of this.traces) {
      extend_trace(trace, this.values.time, this.values[column], is_thinned ? least_gap_of_thinned_s : 0);
      this.complete(trace);
    }
  }

  append_centred(headings) {
    const centred = this.columns.at(-1);
    headings.forEach((heading, row) => {
      centred[this.rows + row] = heading === null ? NaN : heading > 180 ? heading - 360 : heading;
    });
  }

  /** Forgets rows from before a time, many at once. */
  forget_before(time) {
    const old = lower_bound(this.values.time, time);
    const count = old - (old % points_per_bucket);
    if (count < Math.max(this.rows / 10, points_per_bucket)) return;
    for (const column of this.columns) column.copyWithin(0, count, this.rows);
    this.rows -= count;
    this.update_views();
    for (const { trace, column } of this.traces) {
      shorten_trace(trace, count, this.values.time, this.values[column]);
      this.complete(trace);
    }
  }

  /** A trace of a column that grows and shrinks with the stream. */
  trace(column, is_angle = false) {
    const { unit, values } = this;
    const trace = make_trace(unit, unit_name(unit), values.time, values[column], is_angle, least_gap_of_thinned_s);
    this.complete(trace);
    this.traces.push({ trace, column });
    return trace;
  }

  /** The map needs both coordinates. */
  complete(trace) {
    trace.north = this.values.north;
  }

  /** The last row that is not later than a time; -1 if there is none. */
  last_row_at(time) {
    return last_row(this.values.time, time);
  }

  /** The row that is nearest to a time; -1 if there is none. */
  nearest_row_to(time) {
    return nearest_row(this.values.time, time);
  }
}

function last_row(times, time) {
  return lower_bound(times, time + 1e-9) - 1;
}

/** Of two rows that are equally near, it is the later one, as in the legends of the plots. */
function nearest_row(times, time) {
  const next = lower_bound(times, time);
  if (next === times.length) return next - 1;
  return next > 0 && time - times[next - 1] < times[next] - time ? next - 1 : next;
}

// The plots of the report: the default ones, those of data quality, or those of named fields.
"use strict";

/** The plots of columns by which the data can be judged. Units without such a column have no trace. */
const quality_plots = [
  { title: "Position accuracy, horizontal", unit: "m", field: "position_accuracy_horizontal", decimals: 3 },
  { title: "Position accuracy, down", unit: "m", field: "position_accuracy_down", decimals: 3 },
  { title: "Position mode", field: "position_mode", is_integer: true },
  { title: "Velocity mode", field: "velocity_mode", is_integer: true },
  { title: "Orientation mode", field: "orientation_mode", is_integer: true },
  { title: "Navigation status", field: "navigation_status", is_integer: true },
  { title: "Satellites", field: "satellites", is_integer: true },
  { title: "Differential age", unit: "s", field: "differential_age", is_integer: true },
].map((plot) => ({
  kind: "navigation",
  least_span: plot.is_integer ? 2 : 0.05,
  decimals: 0,
  least: plot.is_integer ? undefined : 0,
  is_quality: true,
  ...plot,
}));

/**
 * A plot of coded values, with names on its axis. Only the values that occur have a place there,
 * because their codes may be far apart.
 */
function with_names(plot, names) {
  if (!names) return plot;
  const values = new Set(plot.traces.flatMap((trace) => [...new Set(trace.values)]));
  values.delete(NaN);
  const codes = [...values].sort((a, b) => a - b);
  const places = new Map(codes.map((code, place) => [code, place]));
  const traces = plot.traces.map(({ unit, label, times, values }) =>
    make_trace(unit, label, times, Float32Array.from(values, (code) => places.get(code) ?? NaN), false),
  );
  return { ...plot, names: codes.map((code) => name_of_value(names, code)), traces };
}

/** A plot of a column by which the data of the units can be judged. */
function quality_plot(plot, summary, qualities) {
  const traces = qualities
    .filter(({ columns }) => plot.field in columns && has_values(columns[plot.field]))
    .map(({ unit, columns, time }) => make_trace(unit, unit_name(unit), time, columns[plot.field], false));
  return with_names({ ...plot, traces }, summary.value_names[plot.field]);
}

/** The rows of two streams in order of time: indices into the first, followed by the second. */
function merged_order(first, second) {
  const order = new Uint32Array(first.length + second.length);
  let [i, j] = [0, 0];
  for (let row = 0; row < order.length; ++row)
    order[row] =
      j === second.length || (i < first.length && first[i] <= second[j]) ? i++ : first.length + j++;
  return order;
}

/** Merges the rows of two streams of a unit, in order of time. */
function merged(first, second) {
  const order = merged_order(first.time, second.time);
  const columns = {};
  for (const name of Object.keys(first))
    columns[name] = Float64Array.from(order, (row) =>
      row < first.time.length ? first[name][row] : second[name][row - first.time.length],
    );
  return columns;
}

/** The columns of each unit, with the rows of all kinds merged. */
function columns_by_unit(streams) {
  const columns = new Map();
  for (const { unit, values } of streams)
    columns.set(unit, columns.has(unit) ? merged(columns.get(unit), values) : values);
  return columns;
}

/** Whether all values are integers or unknown. */
function are_integers(traces) {
  return traces.every(({ values }) => values.every((value) => Number.isNaN(value) || Number.isInteger(value)));
}

/** The number of decimals, at least two, that resolves a thousandth of the span of the traces. */
function resolving_decimals(traces) {
  const all = traces.flatMap(({ summary: { low, high } }) => [...low, ...high]).filter(Number.isFinite);
  const [lowest, highest] = [all.reduce((a, b) => Math.min(a, b)), all.reduce((a, b) => Math.max(a, b))];
  const span = Math.max(highest - lowest, Math.abs(highest) * 1e-4, 1e-9);
  return Math.min(Math.max(Math.ceil(3 - Math.log10(span)), 2), 9);
}

/**
 * The units that have a field. Without RCOM if others have it: the rows of RCOM are about all targets
 * in turn, and each target has a trace of its own.
 */
function units_with(field, columns) {
  const units = [...columns.keys()].filter((unit) => field.name in columns.get(unit));
  return units.length > 1 ? units.filter((unit) => unit !== "rcom") : units;
}

function field_plot(field, columns, names) {
  const is_angle = field.name === "heading";
  const units = units_with(field, columns).filter((unit) => has_values(columns.get(unit)[field.name]));
  const all_values = units.map((unit) => columns.get(unit)[field.name]);
  const traces = (is_angle ? unwrapped_where_possible(all_values) : all_values).map((values, i) =>
    make_trace(units[i], unit_name(units[i]), columns.get(units[i]).time, values, is_angle),
  );
  const hint = field.meaning === field.name ? "" : field.meaning;
  const is_integer = are_integers(traces);
  const decimals = is_integer ? 0 : resolving_decimals(traces);
  const plot = { title: field.name, hint, unit: field.unit, decimals, is_integer, is_angle, traces };
  return with_names(plot, names);
}

/** All plots over time that have at least one trace. */
function time_plots_of(summary, streams, qualities) {
  if (!summary.named_fields)
    return [
      ...default_plots.map((plot) => default_plot(plot, streams)),
      ...quality_plots.map((plot) => quality_plot(plot, summary, qualities)),
    ].filter(({ traces }) => traces.length > 0);
  const fields = new Map();
  for (const { columns } of streams)
    for (const column of columns) if (column.bits === 64) fields.set(column.name, column);
  const columns = columns_by_unit(streams);
  return [...fields.values()]
    .map((field) => field_plot(field, columns, summary.value_names[field.name]))
    .filter(({ traces }) => traces.length > 0);
}

// The plots over time and their traces.
"use strict";

/**
 * The default plots. The value axis spans at least `least_span`, so that noise does not fill the
 * plot, or exactly `range`. `decimals` are those of the legend.
 */
const default_plots = [
  {
    title: "Longitudinal range",
    unit: "m",
    field: "range_longitudinal",
    kind: "range",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Lateral range, positive to the left",
    unit: "m",
    field: "range_lateral",
    kind: "range",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Longitudinal range rate",
    unit: "m/s",
    field: "range_rate_longitudinal",
    kind: "range",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Lateral range rate",
    unit: "m/s",
    field: "range_rate_lateral",
    kind: "range",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Time to collision, longitudinal",
    hint: "while approaching, up to 20 s",
    unit: "s",
    field: "ttc_longitudinal",
    kind: "range",
    range: [0, 20],
    decimals: 2,
    prepare: only_collisions,
  },
  {
    title: "Speed, forward",
    unit: "km/h",
    field: "vehicle_velocity_x_kmh",
    kind: "navigation",
    least_span: 5,
    decimals: 1,
  },
  {
    title: "Acceleration, forward",
    unit: "m/s²",
    field: "accel_x",
    kind: "navigation",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Acceleration, to the left",
    unit: "m/s²",
    field: "accel_y",
    kind: "navigation",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Yaw rate, to the left",
    unit: "°/s",
    field: "rate_z",
    kind: "navigation",
    least_span: 2,
    decimals: 2,
  },
  {
    title: "Heading",
    unit: "°",
    field: "heading",
    kind: "navigation",
    least_span: 4,
    decimals: 1,
    is_angle: true,
  },
];

/** Removes negative times to collision, which mean that the vehicles move apart. */
function only_collisions(values) {
  return values.map((value) => (value > 0 ? value : NaN));
}

/** Angles from 0 to 360, or from -180 to 180 if the lines then wrap less often. */
function unwrapped_where_possible(all_values) {
  const wraps = (lists) =>
    lists.reduce(
      (sum, list) =>
        sum + list.reduce((n, value, i) => n + (i > 0 && Math.abs(value - list[i - 1]) > 180), 0),
      0,
    );
  const centred = all_values.map((values) => values.map((value) => (value > 180 ? value - 360 : value)));
  return wraps(centred) < wraps(all_values) ? centred : all_values;
}

/** All status channels have come after 200 packets. As many rows may be from range packets. */
const rows_until_all_channels = 400;

/**
 * Replaces the zeros at the start by NaN: a field is zero until a packet sets it. Zeros that last
 * longer than all status channels take are values, such as the yaw rate on a straight road.
 */
function without_leading_zeros(values) {
  const first = values.findIndex((value) => value !== 0 && !Number.isNaN(value));
  return first > 0 && first <= rows_until_all_channels ? values.slice().fill(NaN, 0, first) : values;
}

function has_values(values) {
  return values.some((value) => !Number.isNaN(value));
}

function default_plot(plot, streams) {
  const found = streams.filter(
    ({ kind, unit }) => kind === plot.kind && (kind === "navigation" || unit !== "hunter"),
  );
  let values = found.map((stream) => without_leading_zeros(stream.values[plot.field]));
  if (plot.prepare) values = values.map(plot.prepare);
  if (plot.is_angle) values = unwrapped_where_possible(values);
  const traces = found.map(({ unit, values: { time } }, i) =>
    make_trace(unit, unit_names[unit], time, values[i], plot.is_angle),
  );
  return { ...plot, traces };
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

/** The number of decimals that resolves a thousandth of the span of the traces. */
function resolving_decimals(traces) {
  const all = traces.flatMap(({ summary: { low, high } }) => [...low, ...high]).filter(Number.isFinite);
  if (traces.every(({ values }) => values.every((value) => Number.isNaN(value) || Number.isInteger(value))))
    return 0;
  const [lowest, highest] = [all.reduce((a, b) => Math.min(a, b)), all.reduce((a, b) => Math.max(a, b))];
  const span = Math.max(highest - lowest, Math.abs(highest) * 1e-4, 1e-9);
  return Math.min(Math.max(Math.ceil(3 - Math.log10(span)), 0), 9);
}

/**
 * The units that have a field. Without RCOM if others have it: the rows of RCOM are about all targets
 * in turn, and each target has a trace of its own.
 */
function units_with(field, columns) {
  const units = [...columns.keys()].filter((unit) => field.name in columns.get(unit));
  return units.length > 1 ? units.filter((unit) => unit !== "rcom") : units;
}

function field_plot(field, columns) {
  const traces = [];
  for (const unit of units_with(field, columns)) {
    const { time, [field.name]: column } = columns.get(unit);
    const values = without_leading_zeros(column);
    if (has_values(values)) traces.push(make_trace(unit, unit_names[unit], time, values, false));
  }
  const hint = field.meaning === field.name ? "" : field.meaning;
  return { title: field.name, hint, unit: field.unit, decimals: resolving_decimals(traces), traces };
}

/** All plots over time that have at least one trace. */
function time_plots_of(summary, streams) {
  if (!summary.named_fields)
    return default_plots.map((plot) => default_plot(plot, streams)).filter(({ traces }) => traces.length > 0);
  const fields = new Map();
  for (const { columns } of streams)
    for (const column of columns) if (column.bits === 64) fields.set(column.name, column);
  const columns = columns_by_unit(streams);
  return [...fields.values()]
    .map((field) => field_plot(field, columns))
    .filter(({ traces }) => traces.length > 0);
}

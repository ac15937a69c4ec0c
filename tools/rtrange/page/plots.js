// The plots over time and their traces.
"use strict";

/**
 * The default plots. The value axis spans at least `least_span`, so that noise does not fill the
 * plot, or exactly `range`, and does not go below `least`. `decimals` are those of the legend.
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
    title: "Lateral range",
    hint: "positive to the left",
    unit: "m",
    field: "range_lateral",
    kind: "range",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Longitudinal range rate",
    hint: "negative: closing, if the target is ahead",
    unit: "m/s",
    field: "range_rate_longitudinal",
    kind: "range",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Lateral range rate",
    hint: "positive to the left",
    unit: "m/s",
    field: "range_rate_lateral",
    kind: "range",
    least_span: 1,
    decimals: 2,
  },
  {
    title: "Time to collision, longitudinal",
    hint: "at constant range rate, up to 20 s",
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
    decimals: 2,
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
    decimals: 2,
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

function has_values(values) {
  return values.some((value) => !Number.isNaN(value));
}

function default_plot(plot, streams) {
  const found = streams.filter(
    ({ kind, unit }) => kind === plot.kind && (kind === "navigation" || unit !== "hunter"),
  );
  let values = found.map((stream) => stream.values[plot.field]);
  if (plot.prepare) values = values.map(plot.prepare);
  if (plot.is_angle) values = unwrapped_where_possible(values);
  const traces = found.map(({ unit, values: { time } }, i) =>
    make_trace(unit, unit_name(unit), time, values[i], plot.is_angle),
  );
  return { ...plot, traces };
}

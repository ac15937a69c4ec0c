// Drawing of one plot over time.
"use strict";

function compass(degrees) {
  return plain((degrees + 360) % 360);
}

/** The value of a trace at a time, for the legend. The unit is in the title. */
function legend_value(plot, trace, time) {
  const point = time === null ? -1 : point_at(trace, time);
  if (point < 0 || Number.isNaN(trace.values[point])) return "–";
  return value_text(plot, plot.is_angle ? (trace.values[point] + 360) % 360 : trace.values[point]);
}

function value_text(plot, value) {
  return value.toFixed(plot.decimals).replace("-", "−");
}

/** The length of the longest value of a plot in characters. */
function longest_value(plot) {
  let longest = 5;
  if (plot.range) return longest; // values outside the range may be cut off
  for (const { summary } of plot.traces)
    for (const bounds of [summary.low, summary.high])
      for (const value of bounds)
        if (Number.isFinite(value)) longest = Math.max(longest, value_text(plot, value).length);
  return longest;
}

/** The width for the labels of an axis, equal for all plots unless a label is very long. */
function label_size(u, labels) {
  const longest = Math.max(0, ...(labels ?? []).map((label) => label.length));
  return Math.max(58, 14 + 7.4 * longest);
}

/** The range of the value axis: with a margin, and at least `least_span`. */
function value_range(plot) {
  if (plot.range) return () => plot.range;
  return (u, low, high) => {
    if (low === null) return [0, 1];
    const span = Math.max(high - low, plot.least_span ?? (Math.abs(high) * 1e-3 || 1));
    const middle = (low + high) / 2;
    return [middle - 0.55 * span, middle + 0.55 * span];
  };
}

function plot_options(plot, axis) {
  const series = plot.traces.map((trace) => ({
    label: trace.label,
    stroke: () => unit_colour(trace.unit),
    width: 1.5,
    points: { show: false },
    pxAlign: 0,
    value: (u, value, series, point) =>
      legend_value(plot, trace, point === null ? null : u.posToVal(u.cursor.left, "x")),
  }));
  return {
    width: 300,
    height: 200,
    padding: [10, 12, 0, 0],
    scales: {
      x: { time: false, auto: false, range: () => [axis.from, axis.to] },
      y: { range: value_range(plot) },
    },
    axes: [
      { ...axis_style(30), values: (u, splits) => splits.map((time) => `${plain(time)} s`) },
      { ...axis_style(label_size), values: (u, splits) => splits.map(plot.is_angle ? compass : plain) },
    ],
    series: [{ label: "Time" }, ...series],
    cursor: {
      y: false,
      drag: { x: true, y: false, setScale: false },
      sync: {
        key: "time",
        setSeries: false,
        scales: ["x", null],
        // Only the position of the cursor is synchronised, not selections.
        filters: { pub: is_cursor_event, sub: is_cursor_event },
      },
      points: { size: 7 },
      bind: {
        mousedown: (u, target, handler) => (event) =>
          event.shiftKey ? pan_with_mouse(event, u, axis) : handler(event),
        dblclick: () => () => axis.show_all(),
      },
    },
    hooks: {
      setSelect: [(u) => select_with_mouse(u, axis)],
      setCursor: [(u) => point_with_mouse(u, axis)],
    },
  };
}

function create_time_plot(plot, axis, parent) {
  const title = plot.unit ? `${plot.title} (${plot.unit})` : plot.title;
  const { figure, canvas } = plot_frame(title, plot.hint, parent);
  figure.dataset.plot = plot.title;
  figure.classList.add("over-time");
  const columns = () => Math.max(50, Math.round(u.over.clientWidth * devicePixelRatio));
  const draw = () => u.setData(plot_data(plot.traces, axis.from, axis.to, columns()), true);
  const u = new uPlot(plot_options(plot, axis), [[0], ...plot.traces.map(() => [null])], canvas);
  u.over.addEventListener(
    "wheel",
    (event) => {
      event.preventDefault();
      axis.zoom(wheel_factor(event), u.posToVal(event.offsetX, "x"));
    },
    { passive: false },
  );
  u.root.style.setProperty("--value-width", `${longest_value(plot)}ch`);
  complete_legend(u, plot.traces);
  keep_fitting(u, canvas, draw);
  axis.range_listeners.push(draw);
  axis.cursor_listeners.push(() => follow_cursor(u, axis));
  return u;
}

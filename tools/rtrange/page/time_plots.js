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
  if (plot.names) return plot.names[value];
  const text = value.toFixed(plot.decimals);
  return Number(text) === 0 ? text.replace("-", "") : text.replace("-", "−");
}

/** The length of the longest value of a plot in digits. */
function longest_value(plot) {
  let longest = 5;
  if (plot.range) return longest; // values outside the range may be cut off
  if (plot.names) {
    const width_of_letters = 0.87; // of a digit's
    return width_of_letters * Math.max(...plot.names.map((name) => axis_name(name).length));
  }
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

/** The least distance of labels. In low plots, it is smaller, for them to have more than one label. */
function label_distance(u, axis, low, high, height) {
  return height < 150 ? 18 : 30;
}

/** Before the run, there are no times. */
function time_label(time, { begin }) {
  return time < Math.min(begin, 0) ? "" : `${plain(time)} s`;
}

/** The range of the value axis: with a margin, and at least `least_span`. */
function value_range(plot) {
  if (plot.range) return () => plot.range;
  if (plot.names) return () => [-0.6, plot.names.length - 0.4];
  return (u, low, high) => {
    if (low === null) return [0, 1];
    const span = Math.max(high - low, plot.least_span ?? (Math.abs(high) * 1e-3 || 1));
    const middle = (low + high) / 2;
    const bottom = Math.max(middle - 0.55 * span, plot.least ?? -Infinity);
    return [bottom, bottom + 1.1 * span];
  };
}

/** A name that is too long for the axis is cut; the legend shows it whole. */
function axis_name(name) {
  const longest = 16;
  return name.length > longest ? `${name.slice(0, longest - 1).trimEnd()}…` : name;
}

/** The labels of the value axis. */
function value_labels(plot) {
  if (plot.names) {
    return {
      splits: () => plot.names.map((name, place) => place),
      values: () => plot.names.map(axis_name),
    };
  }
  const values = (u, splits) => splits.map(plot.is_angle ? compass : plain);
  const integers = Array.from({ length: 10 }, (_, i) => [1, 2, 5].map((digit) => digit * 10 ** i)).flat();
  return plot.is_integer ? { values, incrs: integers } : { values };
}

/** Writes across a plot of times to collision without a line in view why it is empty. */
function explain_empty_plot(u, plot) {
  const { min, max } = u.scales.x;
  const [, limit] = plot.range;
  const is_visible = ({ times, values }) => {
    const end = lower_bound(times, max);
    for (let i = lower_bound(times, min); i < end; ++i) if (values[i] <= limit) return true;
    return false;
  };
  if (plot.traces.some(is_visible)) return;
  const { left, top, width, height } = u.bbox;
  u.ctx.save();
  u.ctx.font = `${13 * devicePixelRatio}px system-ui, "Segoe UI", Roboto, sans-serif`;
  u.ctx.fillStyle = style_colour("--muted");
  u.ctx.textAlign = "center";
  u.ctx.fillText(`never below ${limit} s`, left + width / 2, top + height / 2);
  u.ctx.restore();
}

/**
 * A line that ends at each null. Lines of uPlot go on and are clipped, so that the edges of steep ones
 * stay visible.
 */
function line_with_breaks(is_stepped) {
  return (u, series) => {
    const stroke = new Path2D();
    const [times, values] = [u.data[0], u.data[series]];
    let last_y = null;
    for (let i = 0; i < times.length; ++i) {
      if (values[i] === undefined) continue;
      if (values[i] === null) {
        last_y = null;
        continue;
      }
      const x = u.valToPos(times[i], "x", true);
      const exact_y = u.valToPos(values[i], "y", true);
      const y = is_stepped ? Math.floor(exact_y) + 0.5 : exact_y; // sharp
      if (last_y === null) stroke.moveTo(x, y);
      else if (is_stepped) stroke.lineTo(x, last_y);
      stroke.lineTo(x, y);
      last_y = y;
    }
    return { stroke };
  };
}

/** The label of a trace in the legend, short where the whole names would not fit into one line. */
function legend_label({ names, traces }, trace) {
  const most = names ? 2 : 4;
  if (traces.length <= most) return trace.label;
  const label = trace.label.replace("Target ", "T");
  return names && traces.length > 4 ? label.replace("Hunter", "H") : label;
}

function drawing_hooks(plot, axis, qualities) {
  // The cursor stays at its time when the view changes.
  const draw = [(u) => draw_stripes(u, plot, qualities), (u) => follow_cursor(u, axis)];
  if (plot.range) draw.push((u) => explain_empty_plot(u, plot));
  return { drawClear: plot.is_quality ? [(u) => draw_bands(u, plot, qualities)] : [], draw };
}

function plot_options(plot, axis, qualities) {
  const series = plot.traces.map((trace) => ({
    label: legend_label(plot, trace),
    stroke: () => unit_colour(trace.unit),
    width: 1.5,
    points: { show: false },
    pxAlign: 0,
    paths: line_with_breaks(plot.is_integer),
    value: (u, value, series, point) =>
      legend_value(plot, trace, point === null ? null : cursor_time(u, axis)),
  }));
  return {
    width: 300,
    height: 200,
    // Room for the stripes of bad data, and for half of the last label.
    padding: [Math.max(10, height_of_stripes(qualities)), 28, 0, 0],
    scales: {
      x: { time: false, auto: false, range: () => [axis.from, axis.to] },
      y: { range: value_range(plot) },
    },
    axes: [
      { ...axis_style(30), values: (u, splits) => splits.map((time) => time_label(time, axis)) },
      { ...axis_style(label_size), ...value_labels(plot), space: label_distance },
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
      ...drawing_hooks(plot, axis, qualities),
      setSelect: [(u) => select_with_mouse(u, axis)],
      setCursor: [(u) => point_with_mouse(u, axis)],
    },
  };
}

function create_time_plot(plot, axis, qualities, parent) {
  const title = plot.unit ? `${plot.title} (${plot.unit})` : plot.title;
  const { figure, canvas } = plot_frame(title, plot.hint, parent);
  figure.dataset.plot = plot.title;
  figure.classList.add("over-time");
  const columns = () => Math.max(50, Math.round(u.over.clientWidth * devicePixelRatio));
  const draw = () => {
    if (figure.is_out_of_view && !axis.draws_all) return;
    plot.prepare_drawing?.(axis);
    u.setData(plot_data(plot.traces, axis.from, axis.to, columns()), true);
  };
  const u = new uPlot(plot_options(plot, axis, qualities), [[0], ...plot.traces.map(() => [null])], canvas);
  u.over.addEventListener(
    "wheel",
    (event) => {
      event.preventDefault();
      axis.zoom(wheel_factor(event), u.posToVal(event.offsetX, "x"));
    },
    { passive: false },
  );
  listen_to_touch(u.over, {
    pan: (right) => axis.pan((-right * (axis.to - axis.from)) / u.over.clientWidth),
    zoom: (factor, x) => axis.zoom(factor, u.posToVal(x, "x")),
  });
  u.root.style.setProperty("--value-width", `${longest_value(plot)}ch`);
  complete_legend(u, plot.traces);
  keep_fitting(u, canvas, draw);
  axis.range_listeners.push(draw);
  axis.cursor_listeners.push(() => follow_cursor(u, axis));
  return u;
}

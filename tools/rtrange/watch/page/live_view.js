// The parts of the page that depend on which units there are.
"use strict";

/** The plots over time, each with its traces, of the streams. */
function live_plots(streams) {
  return default_plots.map(({ prepare, ...plot }) => {
    const found = streams.filter(
      ({ kind, unit, values }) => kind === plot.kind && plot.field in values && !(kind === "range" && unit === "hunter"),
    );
    const traces = found.map((stream) => stream.trace(plot.field, plot.is_angle));
    if (!plot.is_angle) return { ...plot, traces };
    return { ...plot, ...angle_traces(traces, found) };
  });
}

/** Columns that the page has in any case. All others are fields that the user has named. */
const own_columns = new Set([
  ...["time", "east", "north", centred_heading, "orientation_mode", "position_accuracy_down"],
  ...default_plots.map(({ field }) => field),
  ...quality_limits.map(({ field }) => field),
]);

/** Plots of the fields that the user has named. */
function field_plots(streams) {
  const fields = new Set(streams.flatMap(({ names }) => names.filter((name) => !own_columns.has(name))));
  return [...fields].map((field) => {
    const by_unit = new Map();
    // All rows of a unit have its latest values, those of NCOM most often.
    for (const stream of streams)
      if (field in stream.values && (stream.kind === "navigation" || !by_unit.has(stream.unit)))
        by_unit.set(stream.unit, stream);
    if (by_unit.size > 1) by_unit.delete("rcom");
    const traces = [...by_unit.values()].map((stream) => stream.trace(field));
    return { title: field, decimals: 3, traces };
  });
}

/** Traces that show angles from 0 to 360, or from -180 to 180 if the lines in view then wrap less often. */
function angle_traces(whole, streams) {
  const centred = streams.map((stream) => stream.trace(centred_heading, true));
  const traces = whole.map((trace) => ({ ...trace }));
  const wraps = (all, { from, to }) =>
    all.reduce((sum, { times, breaks }) => {
      const first = lower_bound(breaks, lower_bound(times, from));
      return sum + lower_bound(breaks, lower_bound(times, to)) - first;
    }, 0);
  const prepare_drawing = (axis) => {
    const chosen = wraps(centred, axis) < wraps(whole, axis) ? centred : whole;
    chosen.forEach((trace, i) => Object.assign(traces[i], trace));
  };
  return { traces, prepare_drawing };
}

/** Saves the drawing of plots that are not on the screen. */
function draw_only_visible(group, axis) {
  const observer = new IntersectionObserver((changes) => {
    for (const { target, isIntersecting } of changes) target.is_out_of_view = !isIntersecting;
    if (changes.some(({ isIntersecting }) => isIntersecting)) axis.redraw();
  });
  for (const figure of group.querySelectorAll("figure.over-time")) observer.observe(figure);
  return observer;
}

class LiveView {
  constructor(streams, axis, start) {
    this.streams = streams;
    axis.range_listeners.length = axis.cursor_listeners.length = 0;
    const parent = document.getElementById("plots");
    const figures = document.getElementById("figures");
    const key_figures = document.getElementById("key_figures");
    for (const each of [parent, figures, key_figures]) each.replaceChildren();
    for (const stream of streams) stream.traces = [];
    choose_colours(streams);
    this.figures = this.create_figures(start.value_names, figures);
    const group = plot_group("", parent);
    const paths = this.create_paths();
    this.map = paths.length > 0 ? new LiveMap(paths, axis, group) : null;
    this.plots = [...live_plots(streams), ...field_plots(streams)]
      .filter(({ traces }) => traces.length > 0)
      .map((plot) => create_time_plot(plot, axis, [], group));
    this.seen = draw_only_visible(group, axis);
    this.key_figures = new KeyFigures(start.key_figures, streams, axis, key_figures, 1000);
    colour_swatches();
  }

  create_figures(value_names, parent) {
    const with_figures = this.streams.filter(({ kind }) => kind !== "rcom");
    const units = [...new Set(with_figures.map(({ unit }) => unit))];
    const cards = units.map((unit) => {
      const own = with_figures.filter((stream) => stream.unit === unit).map((stream) => [stream.kind, stream]);
      return new UnitFigures(unit, Object.fromEntries(own), value_names, parent);
    });
    const widths = cards.map(({ card, groups: { length } }) => {
      card.classList.toggle("narrow", length === 1);
      return length === 1 ? "minmax(0, 0.6fr)" : "minmax(0, 1fr)";
    });
    parent.style.setProperty("--widths", widths.join(" "));
    const most_in_row = 3;
    const rows = Math.ceil(cards.length / most_in_row);
    parent.style.setProperty("--columns-upright", Math.ceil(cards.length / rows) || 1);
    return cards;
  }

  create_paths() {
    return this.streams
      .filter(({ kind, values }) => kind === "navigation" && "east" in values)
      .map((stream) => stream.trace("east"));
  }

  destroy() {
    this.seen.disconnect();
    for (const u of [...this.plots, this.map?.u]) u?.destroy();
  }
}

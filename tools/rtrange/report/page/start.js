// Builds the page.
"use strict";

/**
 * The streams without NCOM from before its sender was identified as a unit, and the number of rows left
 * out.
 */
function without_unidentified_rows(summary, streams) {
  const addresses = new Set(summary.units.map(({ address }) => address));
  const is_early = ({ unit }) => addresses.has(unit);
  const left_out = streams.filter(is_early).reduce((sum, { rows }) => sum + rows, 0);
  return { shown: streams.filter((stream) => !is_early(stream)), left_out };
}

/** Names the senders that are no unit. */
function show_senders(streams) {
  const senders = streams.map(({ unit }) => unit).filter((unit) => !(unit in unit_names));
  if (senders.length > 0)
    show_note(`No RCOM packet named these senders as units: ${[...new Set(senders)].join(", ")}.`);
}

const map_hint = "east and north of the first position  ·  ○ start  ● end  ·  bold: in view";

function start() {
  const summary = JSON.parse(document.getElementById("summary").textContent);
  show_header(summary);
  show_notes(summary);
  const { shown: streams, left_out } = without_unidentified_rows(summary, read_streams(summary));
  show_senders(streams);
  choose_colours(streams);
  const order = Object.keys(unit_names);
  const place = ({ unit }) => (order.includes(unit) ? order.indexOf(unit) : order.length);
  streams.sort((a, b) => place(a) - place(b));
  const times = streams.flatMap(({ values: { time } }) => [time[0], time.at(-1)]);
  const axis =
    times.length > 0
      ? new TimeAxis(Math.min(...times), Math.max(...times))
      : new TimeAxis(summary.begin, summary.end);

  const qualities = qualities_of(streams, summary.view);
  show_pauses(streams);
  show_units(summary, left_out, streams);
  show_outcomes(summary);
  if (streams.length > 0) {
    show_gaps(summary, streams, axis);
    show_rows(streams);
  }
  if (qualities.length > 0) {
    show_quality(summary, qualities);
    show_bad_data(qualities, axis);
  }
  const key_figures = new KeyFigures(summary.key_figures, streams, axis, document.getElementById("key_figures"));
  const parent = document.getElementById("plots");
  const [main_plots, quality_part] = ["", "Data quality"].map((title) => plot_group(title, parent));
  const paths = paths_of(streams);
  const map = paths.length > 0 ? new MapView(paths, axis, main_plots, map_hint) : null;
  const plots = time_plots_of(summary, streams, qualities).map((plot) =>
    create_time_plot(plot, axis, qualities, plot.is_quality ? quality_part : main_plots),
  );
  for (const group of [main_plots, quality_part]) if (!group.querySelector("figure")) group.parentElement.remove();

  if (!map && plots.length === 0) {
    show_note(`Nothing to plot${streams.length > 0 ? ": the rows contain no values of these fields" : ""}.`);
    document.getElementById("toolbar").hidden = parent.hidden = true;
  }

  const readout = () => show_readout(summary, axis);
  axis.range_listeners.push(readout);
  axis.cursor_listeners.push(readout);
  listen_to_keys(parent, axis);
  document.getElementById("reset").addEventListener("click", () => {
    axis.show_all();
    map?.show_all();
  });
  start_theme(() => {
    colour_swatches();
    axis.redraw();
  });
  // For inspection in the browser's console.
  window.report = { summary, streams, qualities, axis, map, plots, key_figures };
}

start();

// Builds the page.
"use strict";

/**
 * Until all units are identified, the NCOM of any unit is in the hunter's table. Such rows are shown
 * only if there are no others of the hunter.
 */
function without_mixed_rows(streams) {
  const mixed = streams.filter(({ unit }) => unit === "unidentified");
  const others = streams.filter(({ unit }) => unit !== "unidentified");
  if (mixed.length === 0) return streams;
  if (!others.some(({ unit }) => unit === "hunter")) {
    show_note(
      "No RCOM packet contained the hunter's address, so all NCOM is shown as the hunter's. If several units sent NCOM, their values are mixed.",
    );
    return [...mixed.map((stream) => ({ ...stream, unit: "hunter" })), ...others];
  }
  const rows = mixed.reduce((sum, stream) => sum + stream.rows, 0);
  show_note(
    `Not plotted: ${rows === 1 ? "the first row" : `${count_text(rows)} rows`} from before all units were identified. Until then, the NCOM of any unit is in the hunter's table.`,
  );
  return others;
}

function start() {
  const summary = JSON.parse(document.getElementById("summary").textContent);
  show_header(summary);
  show_notes(summary);
  const streams = without_mixed_rows(read_streams(summary));
  const units = Object.keys(unit_names);
  streams.sort((a, b) => units.indexOf(a.unit) - units.indexOf(b.unit));
  const times = streams.flatMap(({ values: { time } }) => [time[0], time.at(-1)]);
  const axis =
    times.length > 0
      ? new TimeAxis(Math.min(...times), Math.max(...times))
      : new TimeAxis(summary.begin, summary.end);

  const qualities = qualities_of(streams, summary.view);
  show_pauses(streams);
  show_units(summary);
  show_outcomes(summary);
  if (streams.length > 0) {
    show_gaps(summary, streams, axis);
    show_rows(streams);
  }
  if (qualities.length > 0) {
    show_quality(summary, qualities);
    show_bad_data(qualities, axis);
  }
  const parent = document.getElementById("plots");
  const [main_plots, quality_part] = ["", "Data quality"].map((title) => plot_group(title, parent));
  const paths = paths_of(streams);
  const map = paths.length > 0 ? new MapView(paths, axis, main_plots) : null;
  const plots = time_plots_of(summary, streams, qualities).map((plot) =>
    create_time_plot(plot, axis, qualities, plot.is_quality ? quality_part : main_plots),
  );
  for (const group of [main_plots, quality_part]) if (!group.querySelector("figure")) group.parentElement.remove();

  if (!map && plots.length === 0) {
    show_note("Nothing to plot: the rows contain no values of these fields.");
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
  window.report = { summary, streams, qualities, axis, map, plots };
}

start();

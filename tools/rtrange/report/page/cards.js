// The cards with texts and tables.
"use strict";

function card(title, ...content) {
  const result = element("article", {}, element("h2", { textContent: title }), ...content);
  result.dataset.card = title;
  document.getElementById("cards").append(result);
}

function show_header(summary) {
  const title = summary.captures.join(", ");
  document.title = `${title} – RT-Range run`;
  document.getElementById("title").textContent = title;
  const parts = [
    utc_text(summary, summary.begin),
    duration_text(summary.end - summary.begin),
    `${count_text(summary.frames)} ${summary.frames === 1 ? "frame" : "frames"}`,
    `view: ${summary.view}`,
  ];
  document.getElementById("subtitle").textContent = parts.join("  ·  ");
  document.getElementById("footer").textContent =
    `Written by rtrange ${summary.version}. Plots by uPlot, MIT licence (its text is in the source of this page).`;
}

/** In the header if it is much. */
function show_rows_left_out(count, streams) {
  if (count === 0) return "";
  const rows =
    count === 1
      ? "1 NCOM row from before its sender was identified"
      : `${count_text(count)} NCOM rows from before their senders were identified`;
  const text = `Not plotted: ${rows} as ${count === 1 ? "a unit" : "units"}.`;
  const plotted = streams.reduce((sum, { kind, rows }) => sum + (kind === "navigation" ? rows : 0), 0);
  if (count <= 0.01 * plotted) return element("p", { textContent: text });
  show_note(text);
  return "";
}

function show_units(summary, left_out, streams) {
  const rows = summary.units.map(({ unit, address, time, count }) => {
    const identified = `at ${seconds_text(time)}${count > 1 ? `, ${count_text(count)} times` : ""}`;
    return [swatch(unit), unit_name(unit), address, identified];
  });
  const units = rows.length > 0 ? table(rows, [3]) : "None: no RCOM packet contained an address.";
  card("Units identified", units, show_rows_left_out(left_out, streams));
}

function show_outcomes(summary) {
  card(
    "Frames",
    table(
      summary.outcomes.map(({ count, what }) => [count_text(count), what]),
      [0],
    ),
  );
}

/** The number of rows, and of rows per second. */
function rows_text({ rows, values: { time } }) {
  const span = time.at(-1) - time[0];
  return span > 0
    ? `${count_text(rows)} · ${plain(Number(((rows - 1) / span).toPrecision(3)))} Hz`
    : count_text(rows);
}

function show_rows(streams) {
  const kinds = [
    ["navigation", "NCOM"],
    ["range", "range packets"],
    ["rcom", "RCOM packets"],
  ].filter(([kind]) => streams.some((stream) => stream.kind === kind));
  const rows = [...new Set(streams.map(({ unit }) => unit))].map((unit) => {
    const cells = kinds.map(([kind]) =>
      streams.find((stream) => stream.unit === unit && stream.kind === kind),
    );
    return [swatch(unit), unit_name(unit), ...cells.map((stream) => (stream ? rows_text(stream) : "–"))];
  });
  const head = ["", "", ...kinds.map(([, name]) => name)];
  card("Rows", table([head, ...rows], [2, 3, 4]));
}

/** A button that shows a range of time in all plots. */
function time_link(axis, from, to) {
  const button = element("button", { type: "button", className: "link", textContent: seconds_text(from) });
  const margin = Math.max(2 * (to - from), 0.5);
  button.addEventListener("click", () => axis.show(from - margin, to + margin));
  return button;
}

/** A period of time, as text that may wrap. */
function period(axis, from, to, what = "") {
  return element("span", {}, time_link(axis, from, to), ` for ${duration_text(to - from, 3)}${what}`);
}

function gap_rows(streams, axis) {
  const most = 200;
  const what = { navigation: "NCOM", range: "range", rcom: "RCOM" };
  const rows = [];
  for (const { unit, kind, values } of streams)
    for (const i of rows_after_gaps(values.time)) {
      const [from, to] = [values.time[i - 1], values.time[i]];
      rows.push({
        from,
        cells: () => [
          swatch(unit),
          `${unit_name(unit)}, ${what[kind]}`,
          period(axis, from, to),
        ],
      });
    }
  rows.sort((a, b) => a.from - b.from);
  return {
    count: rows.length,
    table: table(
      rows.slice(0, most).map(({ cells }) => cells()),
      [],
    ),
  };
}

function show_gaps(summary, streams, axis) {
  const gaps = gap_rows(streams, axis);
  const steps = summary.steps_back;
  const content = [];
  if (gaps.count === 0)
    content.push(
      element("p", {
        textContent: "No gaps: no pause is longer than both 50 ms and five times the usual interval.",
      }),
    );
  else
    content.push(
      element("p", { textContent: `${count_text(gaps.count)} ${gaps.count === 1 ? "gap" : "gaps"}` }),
      gaps.table,
    );
  if (steps.count === 0) content.push(element("p", { textContent: "No resets: time never steps back." }));
  else {
    const rows = steps.first.map(({ from, to }) => [
      "from",
      time_link(axis, from, from),
      "back to",
      time_link(axis, to, to),
    ]);
    content.push(
      element("p", {
        textContent: `${count_text(steps.count)} ${steps.count === 1 ? "reset: time steps" : "resets: time steps"} back and the decoder restarts`,
      }),
      table(rows, [1, 3]),
    );
  }
  card("Gaps and resets", ...content);
}

/** Names the moments at which gaps end that restart the decoder. */
function show_restarts({ count, first }) {
  if (count === 0) return;
  const most = 5;
  const times = first.slice(0, most).map(({ to }) => seconds_text(to));
  if (count > most) times.push(`${count_text(count - most)} more times`);
  show_note(
    count === 1
      ? `A new decoder was started at ${times[0]}, after a gap of ${seconds_text(first[0].to - first[0].from)}.`
      : `New decoders were started after gaps, at ${times.slice(0, -1).join(", ")} and ${times.at(-1)}.`,
  );
}

/** Notes that rtrange itself has written, and those about moments at which the decoder restarts. */
function show_notes(summary) {
  for (const note of summary.notes) show_note(note);
  show_restarts(summary.restarts);
  const { count, first } = summary.steps_back;
  if (count === 0) return;
  const most = 5;
  const steps = first
    .slice(0, most)
    .map(({ from, to }) => `from ${seconds_text(from)} to ${seconds_text(to)}`)
    .join(", ");
  const more = count > most ? ` and ${count_text(count - most)} more` : "";
  show_note(
    `Time steps back ${steps}${more}; each step restarts the decoder. The plots show all rows in order of time, so parts that were recorded twice overlap.`,
  );
}

/** Names the pauses of the whole run, in which no unit's packets came. */
function show_pauses(streams) {
  const most = 5;
  const pauses = pauses_of(streams.map(({ values }) => values.time));
  if (pauses.length === 0) return;
  const words = pauses
    .slice(0, most)
    .map(({ from, to }) => `from ${seconds_text(from)} to ${seconds_text(to)} (${duration_text(to - from, 3)})`)
    .join(", ");
  const more = pauses.length > most ? ` and in ${count_text(pauses.length - most)} more pauses` : "";
  show_note(`There are no packets ${words}${more}.`);
}

function show_note(text) {
  document.getElementById("notes").append(element("p", { className: "note", textContent: text }));
}

/** Shows the time under the cursor, or else the range of time in view. */
function show_readout(summary, axis) {
  const { from, to, cursor } = axis;
  const view = `${seconds_text(Math.max(from, axis.begin))} to ${seconds_text(Math.min(to, axis.end))}`;
  document.getElementById("readout").textContent =
    cursor === null ? view : `${seconds_text(cursor)}  ·  ${utc_text(summary, cursor)}`;
}

// The cards about the quality of the data.
"use strict";

function limits_of(values) {
  let low = Infinity;
  let high = -Infinity;
  for (const value of values) {
    if (value < low) low = value;
    if (value > high) high = value;
  }
  return { low, high };
}

/** The lowest and the highest value. */
function span_text(values, decimals, unit) {
  const { low, high } = limits_of(values);
  if (low > high) return "–";
  const [first, last] = [low, high].map((value) => value.toFixed(decimals));
  const dash = "\u2060–\u2060"; // at which no line breaks
  return `${first === last ? first : first + dash + last}${unit ? `\u00a0${unit}` : ""}`;
}

function share_text(part) {
  const percent = 100 * part;
  if (percent > 99.9 && percent < 100) return ">\u00a099.9\u00a0%";
  return percent > 0 && percent < 0.1 ? "<\u00a00.1\u00a0%" : `${plain(Number(percent.toFixed(1)))}\u00a0%`;
}

/** The coded values of a column by name, the most frequent one first. */
function names_text(values, names) {
  const counts = new Map();
  for (const value of values) if (!Number.isNaN(value)) counts.set(value, (counts.get(value) ?? 0) + 1);
  const total = [...counts.values()].reduce((sum, count) => sum + count, 0);
  const name = (value) => name_of_value(names, value).replace(/(?<!,) /g, "\u00a0");
  const parts = [...counts]
    .sort(([, a], [, b]) => b - a)
    .map(([value, count]) => (counts.size === 1 ? name(value) : `${name(value)}\u00a0${share_text(count / total)}`));
  const most = 3;
  if (parts.length > most) parts.splice(most, Infinity, `${parts.length - most} more`);
  return parts.length > 0 ? parts.join(", ") : "–";
}

function count_of_errors(values) {
  return count_text(values.reduce((sum, value) => sum + (value > 0), 0));
}

/** The columns of the table, each with the text of a cell. */
function quality_table_columns(value_names) {
  const named = (field) => (values) => names_text(values, value_names[field]);
  const range = (decimals, unit) => (values) => span_text(values, decimals, unit);
  return [
    ["Accuracy, horizontal", "position_accuracy_horizontal", range(3, "m")],
    ["Accuracy, down", "position_accuracy_down", range(3, "m")],
    ["Position mode", "position_mode", named("position_mode")],
    ["Velocity mode", "velocity_mode", named("velocity_mode")],
    ["Orientation mode", "orientation_mode", named("orientation_mode")],
    ["Navigation status", "navigation_status", named("navigation_status")],
    ["Satellites", "satellites", range(0)],
    ["Differential age", "differential_age", range(0, "s")],
    ["Wrong checksums", "checksum_error", count_of_errors],
  ];
}

/** A cell of the table, in bold if a value is beyond its limit. */
function quality_cell({ columns, bad }, field, text) {
  if (!(field in columns)) return "–";
  const is_bad = bad.some(({ limits }) => [...limits].some((limit) => limit.field === field));
  return element("span", { className: is_bad ? "bad" : "", textContent: text(columns[field]) });
}

function bad_time(quality) {
  if (quality.bad.length === 0) return "–";
  const share = quality.whole_s > 0 ? ` (${share_text(Math.min(quality.bad_s / quality.whole_s, 1))})` : "";
  return element("span", { className: "bad", textContent: `${duration_text(quality.bad_s, 2)}${share}` });
}

/** The limits in words, and where the plots show bad data. */
function limits_text(columns, named_fields) {
  const words = quality_limits.filter(({ field }) => columns.has(field)).map((limit) => limit.words);
  const sentences = [`Data is bad with ${words.join(", ")} or ${gap_limit.words}.`];
  if (columns.has("position_mode") || columns.has("velocity_mode"))
    sentences.push(
      "Modes below differential are none, search, Doppler, SPS, no data, blanked, not recognised and unknown.",
    );
  sentences.push("Values not yet received are not judged.");
  const shading = named_fields ? "" : ", and shading in the plots of data quality";
  sentences.push(`Stripes in the unit's colour above a plot mark bad data${shading}.`);
  return sentences.join(" ");
}

function show_quality(summary, qualities) {
  const present = new Set(qualities.flatMap(({ columns }) => Object.keys(columns)));
  const shown = quality_table_columns(summary.value_names).filter(([, field]) => present.has(field));
  const rows = qualities.map((quality) => [
    swatch(quality.unit),
    unit_name(quality.unit),
    ...shown.map(([, field, text]) => quality_cell(quality, field, text)),
    quality.gaps > 0 ? element("span", { className: "bad", textContent: count_text(quality.gaps) }) : "0",
    bad_time(quality),
  ]);
  const head = ["", "", ...shown.map(([title]) => title), "Gaps", "Bad data"];
  card("Data quality", table([head, ...rows], [head.length - 1]), element("p", { textContent: limits_text(present, summary.named_fields) }));
}

/** The periods of bad data. */
function show_bad_data(qualities, axis) {
  const most = 200;
  const periods = qualities
    .flatMap(({ unit, bad }) => bad.map((period) => ({ unit, ...period })))
    .sort((a, b) => a.from - b.from);
  if (periods.length === 0) {
    card("Bad data", element("p", { textContent: "None." }));
    return;
  }
  const rows = periods
    .slice(0, most)
    .map(({ unit, from, to, limits }) => [
      swatch(unit),
      unit_name(unit),
      period(axis, from, to, `: ${[...limits].map(({ name }) => name).join(", ")}`),
    ]);
  const count = `${count_text(periods.length)} ${periods.length === 1 ? "period" : "periods"}`;
  const text = periods.length > most ? `${count}, the first ${most}:` : count;
  card("Bad data", element("p", { textContent: text }), table(rows, []));
}

// The large figures of each unit.
"use strict";

/** Figures from rows with the packet "range". The first one is the largest. */
const range_figures = [
  { title: "Longitudinal range", short: "Longitudinal", column: "range_longitudinal", unit: "m", decimals: 2 },
  { title: "Lateral range", short: "Lateral", column: "range_lateral", unit: "m", decimals: 2 },
  { title: "Range rate", column: "range_rate_longitudinal", unit: "m/s", decimals: 2 },
  { title: "Time to collision", short: "TTC", column: "ttc_longitudinal", unit: "s", decimals: 2 },
];

/** Figures from rows of NCOM. */
const navigation_figures = [
  { title: "Speed", column: "vehicle_velocity_x_kmh", unit: "km/h", decimals: 1 },
  { title: "Heading", column: "heading", decimals: 1, is_angle: true },
  { title: "Position accuracy", short: "Accuracy", column: "position_accuracy_horizontal", unit: "m", decimals: 3 },
  { title: "Navigation status", short: "Status", column: "navigation_status", is_named: true },
];

const longest_silence_s = 1;
const most_digits = 4;

/** The card of a unit. `range` and `navigation` are its streams; either may be missing. */
class UnitFigures {
  constructor(unit, { range, navigation }, value_names, parent) {
    this.unit = unit;
    this.value_names = value_names;
    this.groups = [];
    this.quality = element("p", { className: "quality" });
    this.card = element(
      "article",
      { className: "unit" },
      element("h2", {}, swatch(unit), " ", unit_name(unit), this.quality),
    );
    this.card.dataset.unit = unit;
    if (range) this.add_group(range, range_figures, "Ranges");
    if (navigation) this.add_group(navigation, navigation_figures, "NCOM");
    parent.append(this.card);
    new ResizeObserver(() => this.fit()).observe(this.card);
  }

  add_group(stream, figures, packets) {
    const shown = figures.map((figure) => this.create_figure(figure));
    const source = element("p", { className: "source" });
    const group = element("div", { className: "group" }, ...shown.map(({ box }) => box), source);
    group.dataset.kind = stream.kind;
    this.card.append(group);
    this.groups.push({ stream, shown, group, source, packets });
  }

  create_figure(figure) {
    const number = element("b");
    const word = element("em");
    const label = element("p", {}, element("span", { textContent: figure.title }), word);
    // For narrow cards; the style chooses.
    if (figure.short) {
      label.firstChild.className = "long";
      label.prepend(element("span", { className: "short", textContent: figure.short }));
    }
    const box = element("div", { className: "value" }, label);
    const line = element("div", {}, number);
    if (figure.unit) line.append(" ", element("small", { textContent: figure.unit }));
    box.append(line);
    box.dataset.column = figure.column;
    return { figure, box, line, number, word };
  }

  /** Shows the rows at the cursor, or else the last ones until `end`. */
  show(cursor, end, reception, is_paused) {
    const time = cursor ?? end;
    for (const { stream, shown, group, source, packets } of this.groups) {
      const row = cursor === null ? stream.last_row_at(end) : stream.nearest_row_to(cursor);
      const sender = reception.senders.find(({ unit, kind }) => unit === stream.unit && kind === stream.kind);
      for (const each of shown) this.show_figure(each, stream.values[each.figure.column]?.[row]);
      const row_time = stream.values.time[row];
      group.classList.toggle("old", !(Math.abs(time - row_time) <= longest_silence_s));
      source.textContent = is_paused
        ? `${packets}: row at ${row_time === undefined ? "–" : row_time_text(row_time)}`
        : source_text(packets, sender, reception);
      if (stream.kind === "navigation") this.show_quality(stream.values, row);
    }
    this.fit();
  }

  show_figure({ figure, box, number, word }, value) {
    const limit = quality_limits.find(({ field }) => field === figure.column);
    const is_known = value !== undefined && !Number.isNaN(value);
    const is_bad = is_known && limit !== undefined && limit.is_bad(value);
    box.classList.toggle("is_bad", is_bad);
    box.classList.toggle("unknown", !is_known);
    word.textContent = is_bad ? "bad" : "";
    number.textContent = is_known ? this.text_of(figure, value) : "–";
  }

  text_of({ column, is_named, is_angle, decimals }, value) {
    if (is_named) return name_of_value(this.value_names[column], value);
    return `${short_text(value, decimals).replace("-", "−")}${is_angle ? "°" : ""}`;
  }

  /** Shrinks the figures until none is wider than its place. Texts of the same lengths are equally wide. */
  fit() {
    const lines = this.groups.flatMap(({ shown }) => shown.map(({ line }) => line));
    const lengths = lines.map(({ textContent }) => textContent.length);
    const is_fitted = this.fitted_width === this.card.clientWidth;
    if (is_fitted && lengths.every((length, i) => length <= this.longest[i])) return;
    this.longest = is_fitted ? lengths.map((length, i) => Math.max(length, this.longest[i])) : lengths;
    this.fitted_width = this.card.clientWidth;
    const [step, smallest] = [0.95, 0.3];
    let size = 1;
    do this.card.style.setProperty("--fit", size);
    while (lines.some((line) => line.scrollWidth > line.clientWidth) && (size *= step) > smallest);
  }

  /** Names the limits that are exceeded, apart from those of figures. */
  show_quality(values, row) {
    const names = quality_limits
      .filter(({ field }) => !navigation_figures.some(({ column }) => column === field))
      .filter(({ field, is_bad }) => {
        const value = values[field]?.[row] ?? NaN;
        return !Number.isNaN(value) && is_bad(value);
      })
      .map(({ name }) => name);
    this.quality.textContent = names.length > 0 ? `Bad: ${names.join(", ")}` : "";
    this.quality.title = this.quality.textContent;
  }
}

/** The decimals that a figure has room for: the greater the value, the fewer. */
function short_text(value, decimals) {
  const text = rounded_text(value, decimals);
  const is_short = decimals === 0 || text.replace(/\D/g, "").length <= most_digits;
  return is_short ? text : short_text(value, decimals - 1);
}

/** At least microseconds, as in the tables. */
function row_time_text(time) {
  const digits = exact_seconds(time).split(".")[1] ?? "";
  return seconds_text(time, Math.max(6, digits.length));
}

/** When packets last came and, as long as more may come, how many come per second. */
function source_text(packets, sender, { now, is_lost, has_ended }) {
  if (!sender) return `${packets}: none`;
  if (has_ended) return `${packets}: last at ${seconds_text(sender.last)}`;
  const age = `${seconds_text(Math.max(0, now - sender.last), 2)} ago`;
  return is_lost ? `${packets}: ${age}` : `${packets}: ${count_text(sender.per_second)}/s · ${age}`;
}

// The key figures of the time in view.
"use strict";

/** Values that are computed from columns. */
const derived_values = {
  distance: {
    columns: ["range_longitudinal", "range_lateral"],
    value: (longitudinal, lateral) => Math.sqrt(longitudinal * longitudinal + lateral * lateral),
  },
  closing_speed: {
    columns: ["range_rate_longitudinal", "range_longitudinal"],
    value: (rate, range) => -rate * Math.sign(range),
  },
};

/** The row whose value has the highest rank is the one of the figure. */
const ranks = {
  lowest: (value) => -value,
  highest: (value) => value,
  least_magnitude: (value) => -Math.abs(value),
  greatest_magnitude: (value) => Math.abs(value),
};

/** A function from rows to the values of a figure. None without the columns that it needs. */
function figure_values({ value }, columns) {
  const { columns: names, value: derive } = derived_values[value] ?? { columns: [value] };
  const [first, second] = names.map((name) => columns[name]);
  if (!first || (derive && !second)) return null;
  return derive ? (row) => derive(first[row], second[row]) : (row) => first[row];
}

/** The value of a figure from `from` to `to`, and the first moment at which it occurs; NaN if unknown. */
function figure_in(figure, columns, from, to) {
  const value_of = figure_values(figure, columns);
  const rank_of = ranks[figure.extreme];
  const { time } = columns;
  const end = time.length;
  let best = { value: NaN, time: NaN };
  let highest = -Infinity;
  for (let row = lower_bound(time, from); row < end && time[row] <= to; ++row) {
    const value = value_of(row);
    const rank = rank_of(value);
    if (!(rank > highest)) continue;
    highest = rank;
    best = { value, time: time[row] };
  }
  return best;
}

/** What the card shows where there is no value. */
function unknown_text({ value }, { time }, from, to) {
  const has_rows = time[lower_bound(time, from)] <= to;
  return value === "ttc_longitudinal" && has_rows ? "never approached" : "–";
}

/** Exact halves go to the even digit, as in all texts that rtrange prints. */
function rounded_text(value, decimals) {
  const digits = { minimumFractionDigits: decimals, maximumFractionDigits: decimals };
  const text = value.toLocaleString("en-US", { ...digits, roundingMode: "halfEven", useGrouping: false });
  return Number(text) === 0 ? text.replace("-", "") : text;
}

/** All digits of a value, like those in the tables: as few as tell it from others of its precision. */
function exact_text(value) {
  if (Math.fround(value) !== value) return String(value);
  let digits = 1;
  while (Math.fround(Number(value.toPrecision(digits))) !== value) ++digits;
  return String(Number(value.toPrecision(digits)));
}

/** The unit as in the titles of the plots. */
function unit_of({ unit }) {
  return unit.replace("deg", "°");
}

/** The card with the key figures: a table of the targets and one of all units. */
class KeyFigures {
  /** `definitions` says which figures there are; `streams` have the rows. */
  constructor(definitions, streams, axis, parent, pause_ms = 100) {
    this.axis = axis;
    this.pause_ms = pause_ms;
    this.tables = ["range", "navigation"].map((kind) => this.create_table(kind, definitions, streams));
    this.tables = this.tables.filter((each) => each !== null);
    if (this.tables.length === 0) return;
    const copy = element("button", { type: "button", textContent: "Copy", title: "Copy as a table" });
    copy.addEventListener("click", () => copy_with(copy, this.text()));
    const heading = element("div", { className: "heading" }, element("h2", { textContent: "Key figures" }));
    this.range = element("span", { className: "range" });
    heading.append(this.range, copy);
    const tables = element("div", { className: "tables" }, ...this.tables.map((each) => each.element));
    this.card = element("article", {}, heading, tables);
    this.card.dataset.card = "Key figures";
    parent.append(this.card);
    axis.range_listeners.push(() => this.update_soon());
    this.update();
  }

  create_table(kind, definitions, streams) {
    const own = streams.filter((stream) => stream.kind === kind && !(kind === "range" && stream.unit === "hunter"));
    const figures = definitions.filter(
      (figure) => figure.kind === kind && own.some(({ values }) => figure_values(figure, values)),
    );
    if (figures.length === 0) return null;
    const rows = own.map((stream) => ({ stream, cells: figures.map((figure) => this.create_cell(figure, stream)) }));
    const head = figures.map((figure) => element("span", {}, `${figure.title} (${unit_of(figure)})`));
    const body = rows.map(({ stream: { unit }, cells }) => [
      swatch(unit),
      unit_name(unit),
      ...cells.map(({ button }) => button),
    ]);
    return { rows, element: table([["", "", ...head], ...body], []) };
  }

  create_cell(figure, stream) {
    const number = element("b");
    const moment = element("small");
    const button = element("button", { type: "button", className: "figure" }, number, " ", moment);
    const cell = { figure, stream, number, moment, button, value: NaN, time: NaN };
    button.addEventListener("click", () => this.axis.point_to(cell.time));
    return cell;
  }

  cells() {
    return this.tables.flatMap(({ rows }) => rows.flatMap(({ cells }) => cells));
  }

  /** Computing takes longer than drawing if there are many rows. */
  update_soon() {
    this.timer ??= setTimeout(() => this.update(), this.pause_ms);
  }

  update() {
    clearTimeout(this.timer);
    this.timer = undefined;
    const { from, to, begin, end } = this.axis;
    this.range.textContent = `${seconds_text(Math.max(from, begin))} to ${seconds_text(Math.min(to, end))}`;
    for (const cell of this.cells()) {
      Object.assign(cell, figure_in(cell.figure, cell.stream.values, from, to));
      const is_known = !Number.isNaN(cell.value);
      cell.number.textContent = is_known
        ? rounded_text(cell.value, cell.figure.decimals).replace("-", "−")
        : unknown_text(cell.figure, cell.stream.values, from, to);
      cell.moment.textContent = is_known ? `at ${seconds_text(cell.time)}` : "";
      cell.button.disabled = !is_known;
    }
  }

  /** The card as a table with tabs, for spreadsheets. */
  text() {
    this.update();
    const rows = this.cells().map(({ figure, stream, value, time }) => {
      const is_known = !Number.isNaN(value);
      const texts = is_known ? [exact_text(value), exact_seconds(time)] : ["", ""];
      return [unit_name(stream.unit), figure.title, texts[0], unit_of(figure), texts[1]];
    });
    return [["Unit", "Key figure", "Value", "Unit of value", "Time (s)"], ...rows]
      .map((cells) => `${cells.join("\t")}\n`)
      .join("");
  }
}

// Elements and texts that all parts of a page use.
"use strict";

function element(name, properties = {}, ...children) {
  const result = Object.assign(document.createElement(name), properties);
  result.append(...children);
  return result;
}

/** A table element. Columns whose index is in `numbers` are aligned to the right. */
function table(rows, numbers) {
  return element(
    "table",
    {},
    ...rows.map((cells) =>
      element(
        "tr",
        {},
        ...cells.map((cell, i) => element("td", { className: numbers.includes(i) ? "number" : "" }, cell)),
      ),
    ),
  );
}

function swatch(unit) {
  const result = element("span", { className: "swatch" });
  result.dataset.unit = unit;
  return result;
}

/** Gives all swatches the colours of the current theme. */
function colour_swatches() {
  for (const each of document.querySelectorAll(".swatch"))
    each.style.background = unit_colour(each.dataset.unit);
}

function count_text(count) {
  return count.toLocaleString("en-US").replaceAll(",", "\u202f");
}

function seconds_text(seconds, decimals = 3) {
  return `${seconds.toFixed(decimals).replace("-", "−")} s`;
}

/** All digits that a time of a row has: nanoseconds, without zeros at the end. */
function exact_seconds(seconds) {
  return seconds.toFixed(9).replace(/\.?0+$/, "");
}

function duration_text(seconds, decimals = 1) {
  if (seconds < 120) return seconds_text(seconds, decimals);
  const minutes = Math.floor(seconds / 60);
  const rest = `${minutes % 60} min ${Math.floor(seconds % 60)} s`;
  return minutes < 60 ? rest : `${Math.floor(minutes / 60)} h ${rest}`;
}

function utc_text(summary, seconds) {
  return `${new Date(summary.zero_ms + seconds * 1000).toISOString().replace("T", " ").replace("Z", "")} UTC`;
}

function name_of_value(names, value) {
  return names[value] ?? `reserved (${value})`;
}

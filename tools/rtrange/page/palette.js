// Names and colours of units. The colours are distinguishable with colour vision deficiencies, and
// each unit has the same one everywhere.
"use strict";

const unit_names = {
  hunter: "Hunter",
  target1: "Target 1",
  target2: "Target 2",
  target3: "Target 3",
  target4: "Target 4",
  rcom: "RCOM",
};

/** Senders that are no unit are named by their address. */
function unit_name(unit) {
  return unit_names[unit] ?? unit;
}

/** The units whose colours such senders have, by address. */
const colours_of_senders = {};

function choose_colours(streams) {
  const present = new Set(streams.map(({ unit }) => unit));
  const free = Object.keys(unit_colours.light).filter((unit) => !present.has(unit) && unit !== "rcom");
  for (const unit of present) if (!(unit in unit_names) && free.length > 0) colours_of_senders[unit] = free.shift();
}

const unit_colours = {
  light: {
    hunter: "#0072b2",
    target1: "#d55e00",
    target2: "#009e73",
    target3: "#b65c97",
    target4: "#d99100",
    rcom: "#5a6472",
  },
  dark: {
    hunter: "#56b4e9",
    target1: "#ff8b4d",
    target2: "#2fca9b",
    target3: "#eba6d0",
    target4: "#f3c846",
    rcom: "#aab4c2",
  },
};

function is_dark() {
  return document.documentElement.dataset.theme === "dark";
}

function unit_colour(unit) {
  const colours = unit_colours[is_dark() ? "dark" : "light"];
  return colours[colours_of_senders[unit] ?? unit] ?? colours.rcom;
}

/** A colour of the style sheet. */
function style_colour(name) {
  return getComputedStyle(document.documentElement).getPropertyValue(name).trim();
}

/** The theme follows the system's setting and the button. Calls `redraw` after each switch. */
function start_theme(redraw) {
  const button = document.getElementById("theme");
  const show = (theme) => {
    document.documentElement.dataset.theme = theme;
    button.textContent = is_dark() ? "Light" : "Dark";
    redraw();
  };
  button.addEventListener("click", () => show(is_dark() ? "light" : "dark"));
  matchMedia("(prefers-color-scheme: dark)").addEventListener("change", ({ matches }) =>
    show(matches ? "dark" : "light"),
  );
  show(document.documentElement.dataset.theme);
}

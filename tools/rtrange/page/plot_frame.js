// Parts that all plots share.
"use strict";

const plot_font = '12px system-ui, "Segoe UI", Roboto, "Helvetica Neue", sans-serif';

/** The style of all axes. Colours are looked up at each drawing, because the theme may change. */
function axis_style(size) {
  return {
    size,
    font: plot_font,
    gap: 6,
    stroke: () => style_colour("--axis"),
    grid: { stroke: () => style_colour("--grid"), width: 1 },
    ticks: { show: false },
  };
}

/** A number without rounding errors of binary fractions. */
function plain(number) {
  return String(Number(number.toPrecision(10))).replace("-", "−");
}

/** Creates a part of the page for plots. Returns the element that the plots belong in. */
function plot_group(title, parent) {
  const plots = document.createElement("div");
  plots.className = "plots";
  const group = document.createElement("section");
  if (title) {
    const heading = document.createElement("h2");
    heading.textContent = title;
    group.append(heading);
  }
  group.append(plots);
  parent.append(group);
  return plots;
}

/** Creates a figure with a title, and the element in it that the plot is drawn in. */
function plot_frame(title, hint, parent) {
  const figure = document.createElement("figure");
  const caption = document.createElement("figcaption");
  caption.textContent = title;
  if (hint) {
    const small = document.createElement("small");
    small.textContent = hint;
    caption.append(" ", small);
  }
  const canvas = document.createElement("div");
  canvas.className = "canvas";
  figure.append(caption, canvas);
  parent.append(figure);
  return { figure, canvas };
}

/** Makes a legend follow the theme, and lets the keyboard hide and show traces. */
function complete_legend(u, traces) {
  const labels = [...u.root.querySelectorAll(".u-legend .u-series > th")].slice(-traces.length);
  for (const [i, label] of labels.entries()) {
    const marker = label.querySelector(".u-marker");
    marker.classList.add("swatch");
    marker.dataset.unit = traces[i].unit;
    label.tabIndex = 0;
    label.setAttribute("role", "button");
    label.addEventListener("keydown", (event) => {
      if (event.key !== "Enter" && event.key !== " ") return;
      label.click();
      event.preventDefault();
    });
  }
}

/** Fits a plot to its figure, now and whenever the figure is resized. Calls `draw` each time. */
function keep_fitting(u, canvas, draw) {
  const legend = u.root.querySelector(".u-legend");
  const fit = () => {
    const width = canvas.clientWidth;
    legend.style.width = `${width}px`; // before its height is read: the width decides how many lines it has
    u.setSize({ width, height: Math.max(canvas.clientHeight - legend.offsetHeight, 80) });
    draw();
  };
  fit();
  new ResizeObserver(fit).observe(canvas);
}

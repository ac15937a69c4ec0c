// What all plots have in common.
"use strict";

const plot_font = '12px system-ui, "Segoe UI", Roboto, "Helvetica Neue", sans-serif';

/** What all axes of all plots have in common; colours are asked for at each drawing. */
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

/** Numbers without the noise of binary fractions. */
function plain(number) {
  return String(Number(number.toPrecision(10))).replace("-", "−");
}

/** A frame with a title for a plot, and a function that tells the size of what is inside. */
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

/** Gives a legend the colours of the units, also after a switch of the theme, and keys to switch traces. */
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

/** Fits a plot to its frame now and whenever that changes; `draw` is called after each. */
function keep_fitting(u, canvas, draw) {
  const legend = u.root.querySelector(".u-legend");
  const fit = () => {
    const width = canvas.clientWidth;
    legend.style.width = `${width}px`; // how many lines it takes depends on it
    u.setSize({ width, height: Math.max(canvas.clientHeight - legend.offsetHeight, 80) });
    draw();
  };
  fit();
  new ResizeObserver(fit).observe(canvas);
}

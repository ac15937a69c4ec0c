// Marks bad data in the plots over time.
"use strict";

const lane_height = 2;
const lane_distance = 3;

/** Calls `mark` with the left end and the width, in canvas pixels, of each visible period. */
function for_visible(periods, u, mark) {
  const { min, max } = u.scales.x;
  const { left, width } = u.bbox;
  const x_of = (time) => left + (Math.min(Math.max(time, min), max) - min) * (width / (max - min));
  const thinnest = 1.5 * devicePixelRatio;
  let end = -Infinity;
  for (const { from, to } of periods) {
    if (to < min || from > max) continue;
    const begin = x_of(from);
    if (begin < end - 0.5 && x_of(to) <= end) continue; // drawn already, as of most short periods
    end = Math.max(x_of(to), begin + thinnest);
    mark(begin, end - begin);
  }
}

/** The units whose bad data a plot marks: those that it shows, and the hunter, to which ranges refer. */
function marked_qualities(u, plot, qualities) {
  const hidden = plot.traces.filter((trace, i) => !u.series[i + 1].show).map(({ unit }) => unit);
  const units = new Set(plot.traces.map(({ unit }) => unit));
  if (plot.kind === "range") units.add("hunter");
  return qualities.filter(({ unit }) => units.has(unit) && !hidden.includes(unit));
}

/** Shades the background of a plot. */
function draw_bands(u, plot, qualities) {
  const { top, height } = u.bbox;
  u.ctx.save();
  u.ctx.fillStyle = style_colour("--bad");
  for (const { bad } of marked_qualities(u, plot, qualities))
    for_visible(bad, u, (left, width) => u.ctx.fillRect(left, top, width, height));
  u.ctx.restore();
}

/** The room above a plot for a stripe of each unit. */
function height_of_stripes(qualities) {
  return qualities.some(({ bad }) => bad.length > 0) ? lane_distance * qualities.length + 2 : 0;
}

/** Draws a stripe per unit above a plot. */
function draw_stripes(u, plot, qualities) {
  u.ctx.save();
  marked_qualities(u, plot, qualities).forEach(({ unit, bad }, lane, { length }) => {
    u.ctx.fillStyle = unit_colour(unit);
    const top = u.bbox.top - (lane_distance * (length - lane) + 1) * devicePixelRatio;
    for_visible(bad, u, (left, width) => u.ctx.fillRect(left, top, width, lane_height * devicePixelRatio));
  });
  u.ctx.restore();
}

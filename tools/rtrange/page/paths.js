// The paths of the units.
"use strict";

/** The positions of each unit: from its NCOM or, if there is none, from range packets. */
function paths_of(streams) {
  const paths = new Map();
  for (const kind of ["navigation", "range"])
    for (const { unit, kind: kind_of_stream, values } of streams)
      if (kind_of_stream === kind && !paths.has(unit) && has_values(values.east))
        paths.set(unit, make_trace(unit, unit_name(unit), values.time, values.east, false));
  for (const { unit, values } of streams) {
    const path = paths.get(unit);
    if (path && path.values === values.east) path.north = values.north;
  }
  return [...paths.values()];
}

/** The bounds of all paths in metres. */
function extent_of(paths) {
  const extent = { west: Infinity, east: -Infinity, south: Infinity, north: -Infinity };
  for (const { values, north } of paths)
    for (let i = 0; i < values.length; ++i) {
      extent.west = Math.min(extent.west, Number.isNaN(values[i]) ? Infinity : values[i]);
      extent.east = Math.max(extent.east, Number.isNaN(values[i]) ? -Infinity : values[i]);
      extent.south = Math.min(extent.south, Number.isNaN(north[i]) ? Infinity : north[i]);
      extent.north = Math.max(extent.north, Number.isNaN(north[i]) ? -Infinity : north[i]);
    }
  return extent;
}

/** The points of a path that are at least `spacing` metres from the previous one. */
function coarse_points({ values, north }, spacing) {
  const points = [];
  for (let i = 0, last = -1; i < values.length; ++i) {
    const is_far =
      last < 0 || Math.abs(values[i] - values[last]) + Math.abs(north[i] - north[last]) >= spacing;
    if (Number.isNaN(values[i]) || !is_far) continue;
    points.push(i);
    last = i;
  }
  return Uint32Array.from(points);
}

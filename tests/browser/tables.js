// The tables of `rtrange decode`, and the key figures in them.

import { readFileSync } from "node:fs";
import { join } from "node:path";
import { run_rtrange } from "./captures.js";

/** The rows of a unit's table by column, as texts. */
export function read_table(folder, unit) {
  const [head, ...lines] = readFileSync(join(folder, `${unit}.csv`), "utf8").trim().split("\n");
  const names = head.split(",");
  return lines.map((line) => {
    const cells = line.split(",");
    return Object.fromEntries(names.map((name, i) => [name, cells[i]]));
  });
}

/** Decodes a capture and returns the tables of its units. */
export function decode_tables(capture, units, ...options) {
  const folder = `${capture}.tables`;
  run_rtrange("decode", capture, "--output", folder, "--overwrite", ...options);
  return Object.fromEntries(units.map((unit) => [unit, read_table(folder, unit)]));
}

/** [name, kind of rows, decimals, the value of a row, what is sought]; the least value is the figure. */
const figures = [
  ["Smallest longitudinal range", "range", 2, (row) => row.range_longitudinal, Math.abs],
  ["Smallest time to collision", "range", 2, (row) => row.ttc_longitudinal, (value) => value],
  [
    "Largest closing speed",
    "range",
    2,
    (row) => (row.range_longitudinal > 0 ? -row.range_rate_longitudinal : row.range_rate_longitudinal),
    (value) => -value,
  ],
  [
    "Smallest total distance",
    "range",
    2,
    (row) => Math.sqrt(row.range_longitudinal ** 2 + row.range_lateral ** 2),
    (value) => value,
  ],
  ["Highest speed", "navigation", 1, (row) => row.vehicle_velocity_x_kmh, (value) => -value],
  ["Lowest speed", "navigation", 1, (row) => row.vehicle_velocity_x_kmh, (value) => value],
  ["Strongest braking", "navigation", 2, (row) => row.accel_x, (value) => value],
  ["Strongest lateral acceleration", "navigation", 2, (row) => row.accel_y, (value) => -Math.abs(value)],
  ["Largest yaw rate", "navigation", 2, (row) => row.rate_z, (value) => -Math.abs(value)],
];

/** Key figures of a table from `from` to `to`: value with the decimals shown, and time, by name. */
export function key_figures_of(rows, from, to) {
  const in_view = rows.filter(({ time_s }) => Number(time_s) >= from && Number(time_s) <= to);
  const result = {};
  for (const [name, kind, decimals, value_of, order] of figures) {
    let best = null;
    for (const row of in_view) {
      if ((row.packet === "range") !== (kind === "range")) continue;
      const text = value_of(row);
      if (text === "" || text === undefined || Number.isNaN(Number(text))) continue;
      const value = Number(text);
      if (best === null || order(value) < order(best.value)) best = { value, time: Number(row.time_s) };
    }
    if (best) result[name] = { ...best, decimals };
  }
  return result;
}

// What bad data is.
"use strict";

/** None, search, Doppler, SPS, no data, blanked, not recognised and unknown. */
const modes_below_differential = new Set([0, 1, 2, 3, 10, 11, 12, 13, 19, 20, 21, 25, 26, 32]);
const locked = 4;

/** What bad data is. The page shows `words`, and `name` for a period of bad data. */
const quality_limits = [
  {
    field: "navigation_status",
    name: "navigation status",
    words: "a navigation status other than locked",
    is_bad: (value) => value !== locked,
  },
  {
    field: "position_mode",
    name: "position mode",
    words: "a position mode below differential",
    is_bad: (value) => modes_below_differential.has(value),
  },
  {
    field: "velocity_mode",
    name: "velocity mode",
    words: "a velocity mode below differential",
    is_bad: (value) => modes_below_differential.has(value),
  },
  {
    field: "position_accuracy_horizontal",
    name: "position accuracy",
    words: "a horizontal position accuracy above 0.5 m",
    is_bad: (value) => value > 0.5,
  },
  {
    field: "satellites",
    name: "satellites",
    words: "fewer than 6 satellites",
    is_bad: (value) => value < 6,
  },
  {
    field: "differential_age",
    name: "differential age",
    words: "a differential age above 10 s",
    is_bad: (value) => value > 10,
  },
  {
    field: "checksum_error",
    name: "checksum",
    words: "a wrong checksum",
    is_bad: (value) => value !== 0,
  },
];

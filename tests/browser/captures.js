// Captures for the tests, made with the program itself.

import { execFileSync } from "node:child_process";
import { readFileSync, writeFileSync } from "node:fs";

const rtrange = process.env.RTRANGE;

export function run_rtrange(...options) {
  return execFileSync(rtrange, options, { encoding: "utf8" });
}

/** Corrects the checksums of an NCOM packet whose bytes have been changed. */
export function correct_checksums(ncom) {
  for (const place of [22, 61, 71]) ncom[place] = ncom.subarray(1, place).reduce((sum, byte) => sum + byte, 0);
}

/** Leaves frames out of a capture: those for whose time, in seconds from the first, and bytes `keep` is false. */
export function keep_frames(source, target, keep) {
  const capture = readFileSync(source);
  const kept = [capture.subarray(0, 24)];
  let begin = null;
  for (let at = 24; at < capture.length;) {
    const time = capture.readUInt32LE(at) + capture.readUInt32LE(at + 4) * 1e-9;
    const end = at + 16 + capture.readUInt32LE(at + 8);
    begin ??= time;
    if (keep(time - begin, capture.subarray(at + 16, end))) kept.push(capture.subarray(at, end));
    at = end;
  }
  writeFileSync(target, Buffer.concat(kept));
}

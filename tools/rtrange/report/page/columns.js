// Reads the columns of numbers from the data blocks of the page.
"use strict";

function bytes_of(base64) {
  if (Uint8Array.fromBase64) return Uint8Array.fromBase64(base64);
  return Uint8Array.from(atob(base64), (character) => character.charCodeAt(0));
}

function empty_columns(stream) {
  const columns = { time: new Float64Array(stream.rows) };
  for (const { name, bits } of stream.columns)
    columns[name] = bits === 64 ? new Float64Array(stream.rows) : new Float32Array(stream.rows);
  return columns;
}

/** Decodes a block of a stream into its columns, from `row` on. Returns the number of its rows. */
function append_block(block, stream, columns, row) {
  const rows = Number(block.dataset.rows);
  const { buffer } = bytes_of(block.textContent);
  let at = 0;
  const read = (type, count) => {
    const begin = at;
    at += count * type.BYTES_PER_ELEMENT;
    return new type(buffer.slice(begin, at));
  };
  columns.time.set(read(Float64Array, rows), row);
  for (const { name, runs } of stream.columns) {
    const column = columns[name];
    if (!runs) {
      column.set(read(column.constructor, rows), row);
      continue;
    }
    const [count] = read(Uint32Array, 1);
    const ends = read(Uint32Array, count);
    read(column.constructor, count).forEach((value, i) =>
      column.fill(value, row + (ends[i - 1] ?? 0), row + ends[i]),
    );
  }
  return rows;
}

function is_ascending(times) {
  for (let i = 1; i < times.length; ++i) if (times[i] < times[i - 1]) return false;
  return true;
}

/** Plots need rows in order of time. After a step back in time they are not. */
function sort_by_time(columns) {
  if (is_ascending(columns.time)) return columns;
  const { time } = columns;
  const order = Uint32Array.from(time.keys()).sort((a, b) => time[a] - time[b] || a - b);
  const sorted = {};
  for (const [name, column] of Object.entries(columns)) sorted[name] = column.map((_, i) => column[order[i]]);
  return sorted;
}

/** The streams of the summary, each with its columns as typed arrays by name. */
function read_streams(summary) {
  const columns = summary.streams.map(empty_columns);
  const filled = summary.streams.map(() => 0);
  for (const block of document.querySelectorAll("script[data-stream]")) {
    const stream = Number(block.dataset.stream);
    filled[stream] += append_block(block, summary.streams[stream], columns[stream], filled[stream]);
    block.remove(); // frees the text, which is larger than the numbers
  }
  return summary.streams.map((stream, i) => ({ ...stream, values: sort_by_time(columns[i]) }));
}

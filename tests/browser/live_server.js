// A server of the live page.

import { spawn } from "node:child_process";

/** Starts `rtrange watch` at a free port and waits until it listens. `url` is the page's; `kill` ends it. */
export function start_live(capture, ...options) {
  return start_live_at(0, capture, ...options);
}

export async function start_live_at(port, capture, ...options) {
  const server = spawn(process.env.RTRANGE, ["watch", capture, "--listen", `127.0.0.1:${port}`, ...options]);
  let text = "";
  const url = await new Promise((found, failed) => {
    for (const stream of [server.stdout, server.stderr])
      stream.on("data", (data) => {
        text += data;
        const match = text.match(/Watch at (http:\S+)/);
        if (match) found(match[1]);
      });
    server.on("exit", () => failed(new Error(text)));
  });
  const has_exited = new Promise((done) => server.on("exit", done));
  const kill = (signal = "SIGINT") => {
    server.kill(signal);
    return has_exited;
  };
  return { url, port: new URL(url).port, kill };
}

// The connection to rtrange.
"use strict";

const longest_pause_ms = 3000;

/** Receives the events, and connects again when none come. */
class Connection {
  /** `on_start` and `on_update` get the data of the events. */
  constructor(on_start, on_update) {
    this.on_start = on_start;
    this.on_update = on_update;
    this.last_event = performance.now();
    this.is_lost = false;
    this.is_full = false;
    this.connect();
    setInterval(() => this.check(), 250);
  }

  connect() {
    this.source?.close();
    this.last_attempt = performance.now();
    this.source = new EventSource("/events");
    this.source.addEventListener("start", ({ data }) => this.receive(data, this.on_start));
    this.source.addEventListener("update", ({ data }) => this.receive(data, this.on_update));
    this.source.addEventListener("error", () => this.lose());
  }

  lose() {
    this.is_lost = true;
    const is_refused = this.source.readyState === EventSource.CLOSED;
    if (is_refused) this.ask_why();
    else this.is_full = false;
  }

  /** Asks for the status of the answer, which an EventSource does not tell. */
  async ask_why() {
    const request = new AbortController();
    try {
      const { status } = await fetch("/events", { signal: request.signal });
      this.is_full = this.is_lost && status === 503;
    } catch {
      this.is_full = false; // no answer
    }
    request.abort();
  }

  receive(data, handle) {
    this.last_event = performance.now();
    this.is_lost = this.is_full = false;
    handle(JSON.parse(data));
  }

  check() {
    const now = performance.now();
    if (now - this.last_event > longest_pause_ms) this.is_lost = true;
    if (this.is_lost && now - Math.max(this.last_event, this.last_attempt) > longest_pause_ms / 2) this.connect();
  }
}

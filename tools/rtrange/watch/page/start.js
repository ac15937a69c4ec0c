// Runs the page.
"use strict";

const windows = [30, 60, 120, 300, 600];
const shortest_redraw_ms = 40;
const columns_of_plot = 1000;
const full_text = "32 browsers are watching already; trying again";

/** Makes two rows of plots as high as the room below the warnings and the figures. */
function fit_plots() {
  const { offsetTop, offsetHeight } = document.getElementById("figures");
  document.getElementById("plots").style.setProperty("--above", `${offsetTop + offsetHeight}px`);
}

class Watch {
  constructor() {
    this.axis = new LiveAxis(() => this.pause());
    this.is_paused = false;
    this.forget();
    this.create_controls();
    this.connection = new Connection(
      (data) => this.start(data),
      (data) => this.update(data),
    );
    setInterval(() => this.check(), 250);
    const fitting = new ResizeObserver(fit_plots);
    for (const id of ["figures", "warnings"]) fitting.observe(document.getElementById(id));
    addEventListener("beforeprint", () => this.axis.redraw_all());
    start_theme(() => {
      colour_swatches();
      this.axis.redraw();
    });
  }

  /** Forgets all rows. */
  forget() {
    this.view?.destroy();
    this.view = null;
    this.streams = new Map();
    this.status = null;
    this.last_drawing = -Infinity;
    if (this.is_paused) this.resume();
  }

  /** After a lost connection to the same run, rows, view and pause stay. */
  start(data) {
    this.is_same_run = data.run === this.data?.run;
    if (!this.is_same_run) this.forget();
    this.data = data;
    document.title = `${data.title} – RT-Range live`;
    document.getElementById("title").textContent = data.title;
    document.getElementById("footer").textContent =
      `Served by rtrange ${data.version}. Plots by uPlot, MIT licence (its text is in the source of this page).`;
  }

  update(status) {
    if (this.status && status.epoch !== this.status.epoch) this.forget();
    const ends = status.state === "ended" && this.status?.state !== "ended";
    this.status = status;
    for (const rows of status.streams) this.append(rows);
    this.is_same_run = false;
    const kept = this.is_paused ? 2 * length_s : length_s;
    if (status.now !== null) for (const stream of this.streams.values()) stream.forget_before(status.now - kept);
    this.show_state(); // a warning must not outlive its cause
    if (ends) this.draw_end();
    else this.draw_soon();
  }

  /** Draws all plots as they stay. */
  draw_end() {
    this.draw();
    this.axis.redraw_all();
  }

  append(rows) {
    const key = `${rows.unit} ${rows.kind}`;
    if (!this.streams.has(key)) this.streams.set(key, new LiveStream(rows));
    const stream = this.streams.get(key);
    stream.append(this.is_same_run ? stream.new_rows(rows.values) : rows.values);
  }

  /** Whether a sender is shown: addresses of units are those units' from before they were identified. */
  is_shown(unit) {
    return !this.status.units.some(({ address }) => address === unit);
  }

  shown_streams() {
    const order = Object.keys(unit_names);
    const place = ({ unit }) => (order.includes(unit) ? order.indexOf(unit) : order.length);
    return [...this.streams.values()]
      .filter(({ unit }) => this.is_shown(unit))
      .sort((a, b) => place(a) - place(b));
  }

  /** The more time is in view, the less a plot changes. */
  draw_soon() {
    this.frame ??= requestAnimationFrame(() => {
      this.frame = undefined;
      const pause_ms = Math.min(Math.max((1000 * this.axis.window_s) / columns_of_plot, shortest_redraw_ms), 250);
      // A little early rather than one frame late.
      if (performance.now() - this.last_drawing < pause_ms - 8) return;
      this.last_drawing = performance.now();
      this.draw();
    });
  }

  draw() {
    if (!this.status || this.status.now === null) return;
    const streams = this.shown_streams();
    const is_new = streams.length !== this.view?.streams.length || streams.some((each, i) => each !== this.view.streams[i]);
    if (is_new && streams.length > 0) {
      this.view?.destroy();
      this.view = new LiveView(streams, this.axis, this.data);
      this.axis.cursor_listeners.push(() => this.show_rows());
    }
    if (this.is_paused) {
      if (is_new) this.axis.redraw();
      return;
    }
    const first = Math.min(this.status.now, ...streams.map(({ values }) => values.time[0]));
    this.axis.follow(this.status.now, first);
    this.show_rows();
    this.show_clock();
  }

  /** The large figures: the latest ones or, while paused, those at the cursor. */
  show_rows() {
    const cursor = this.is_paused ? this.axis.cursor : null;
    const reception = this.reception();
    document.getElementById("figures").classList.toggle("old", reception.is_lost);
    for (const unit of this.view?.figures ?? []) unit.show(cursor, this.axis.end, reception, this.is_paused);
    if (this.is_paused) this.show_clock();
  }

  /** What is known of the senders now. Without a connection, time goes on since the last update. */
  reception() {
    const { senders, now, state } = this.status;
    const is_lost = this.connection.is_lost;
    const since_s = is_lost ? (performance.now() - this.connection.last_event) / 1000 : 0;
    return { senders, now: now + since_s, is_lost, has_ended: state === "ended" };
  }

  show_clock() {
    const time = this.is_paused ? (this.axis.cursor ?? this.axis.end) : this.axis.end;
    const [date, utc] = utc_text(this.status, time).split(" ");
    const decimals = this.is_paused ? 3 : 1;
    const clock = document.getElementById("clock");
    clock.replaceChildren(
      element("span", { className: "date", textContent: `${date} ` }),
      `${utc.slice(0, 9 + decimals)} UTC · ${seconds_text(time, decimals)}`,
    );
  }

  pause() {
    if (this.is_paused || !this.status || this.status.now === null) return;
    this.is_paused = true;
    this.show_pause();
    this.show_rows();
  }

  resume() {
    this.is_paused = false;
    this.show_pause();
    this.draw_soon();
  }

  show_pause() {
    const button = document.getElementById("pause");
    button.textContent = this.is_paused ? "Resume" : "Pause";
    button.setAttribute("aria-pressed", this.is_paused);
    this.show_state();
  }

  create_controls() {
    const parent = document.getElementById("windows");
    for (const seconds of windows) {
      const text = seconds < 60 ? `${seconds} s` : `${seconds / 60} min`;
      const button = element("button", { type: "button", textContent: text });
      button.setAttribute("aria-pressed", seconds === this.axis.window_s);
      button.addEventListener("click", () => this.choose_window(seconds));
      parent.append(button);
    }
    document.getElementById("pause").addEventListener("click", () => (this.is_paused ? this.resume() : this.pause()));
    listen_to_keys(document.getElementById("plots"), this.axis);
  }

  choose_window(seconds) {
    this.axis.window_s = seconds;
    document.querySelectorAll("#windows button").forEach((button, i) =>
      button.setAttribute("aria-pressed", windows[i] === seconds),
    );
    if (this.is_paused) this.axis.show_all();
    else this.draw();
  }

  /** Shows what changes without an update: the connection, and the ages of figures. */
  check() {
    this.show_state();
    if (this.status?.now != null) this.show_rows();
  }

  show_state() {
    const { status } = this;
    const is_lost = this.connection?.is_lost ?? false;
    const states = { waiting: "Waiting", running: "Running", ended: "Ended" };
    const state = document.getElementById("state");
    state.textContent = is_lost ? "Not connected" : this.is_paused ? "Paused" : (states[status?.state] ?? "Connecting");
    state.dataset.state = is_lost ? "lost" : this.is_paused ? "paused" : (status?.state ?? "");
    const hints = { waiting: "Waiting for the first frame", ended: "End of the capture" };
    if (is_lost) show_warnings([this.connection.is_full ? full_text : "Connection lost; trying again"], []);
    else if (status) {
      const hint = hints[status.state];
      show_warnings(silences(status, (unit) => this.is_shown(unit)), hint ? [hint] : []);
      this.show_notes(status.notes);
    }
  }

  show_notes(notes) {
    const area = document.getElementById("notes");
    const text = notes.join("\n");
    if (area.dataset.text === text) return;
    area.dataset.text = text;
    area.replaceChildren(...notes.map((note) => element("p", { className: "note", textContent: note })));
  }
}

// For inspection in the browser's console.
window.watch = new Watch();

// The range of time in view and the time under the cursor. All plots share them.
"use strict";

class TimeAxis {
  /** `begin` and `end` are the times of the whole run in seconds. */
  constructor(begin, end) {
    this.set_whole(begin, end);
    this.from = this.whole.from;
    this.to = this.whole.to;
    this.cursor = null;
    this.range_listeners = [];
    this.cursor_listeners = [];
    this.pending = false;
  }

  /** Sets the times that can be shown. */
  set_whole(begin, end) {
    this.begin = begin;
    this.end = end;
    const span = Math.max(end - begin, 0.01);
    this.whole = { from: begin - 0.01 * span, to: begin + 1.01 * span };
  }

  /** Shows a range of time. Several calls within an animation frame cause one redraw. */
  show(from, to) {
    const shortest = 1e-3;
    const limit = this.whole.to - this.whole.from;
    const span = Math.min(Math.max(to - from, shortest), limit);
    const middle = (from + to) / 2;
    this.from = Math.min(Math.max(middle - span / 2, this.whole.from), this.whole.to - span);
    this.to = this.from + span;
    if (this.pending) return;
    this.pending = true;
    requestAnimationFrame(() => {
      this.pending = false;
      this.redraw();
    });
  }

  redraw() {
    for (const listener of this.range_listeners) listener();
  }

  show_all() {
    this.show(this.whole.from, this.whole.to);
  }

  /** Zooms by a factor around a time. */
  zoom(factor, around) {
    this.show(around - (around - this.from) * factor, around + (this.to - around) * factor);
  }

  pan(seconds) {
    this.show(this.from + seconds, this.to + seconds);
  }

  /** Moves the cursor to a time, or hides it for null. */
  point_to(time) {
    if (time === this.cursor) return;
    this.cursor = time;
    for (const listener of this.cursor_listeners) listener();
  }
}

/** Handles the keys that move the view while the plots have the focus. */
function listen_to_keys(element, axis) {
  const span = () => axis.to - axis.from;
  const middle = () => (axis.from + axis.to) / 2;
  const actions = {
    ArrowLeft: () => axis.pan(-0.1 * span()),
    ArrowRight: () => axis.pan(0.1 * span()),
    "+": () => axis.zoom(0.8, middle()),
    "-": () => axis.zoom(1.25, middle()),
    0: () => axis.show_all(),
  };
  element.addEventListener("keydown", (event) => {
    const action = actions[event.key];
    if (!action || event.ctrlKey || event.altKey || event.metaKey) return;
    action();
    event.preventDefault();
  });
}

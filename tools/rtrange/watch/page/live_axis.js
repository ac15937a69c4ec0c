// The time axis of the live page.
"use strict";

class LiveAxis extends TimeAxis {
  /** Calls `pause` before a user's action moves the view. */
  constructor(pause) {
    super(0, 1);
    this.pause = pause;
    this.window_s = 30;
    this.draws_all = false;
  }

  /** Shows the window that ends now. The rows begin at `first`. */
  follow(now, first) {
    this.set_whole(Math.max(first, now - length_s), now);
    this.whole = { from: now - length_s, to: now };
    this.from = now - this.window_s;
    this.to = now;
    this.redraw();
  }

  /** Redraws the plots that are not on the screen, too. */
  redraw_all() {
    this.draws_all = true;
    this.redraw();
    this.draws_all = false;
  }

  show(from, to) {
    this.pause();
    super.show(from, to);
  }

  show_all() {
    super.show(this.end - this.window_s, this.end);
  }
}

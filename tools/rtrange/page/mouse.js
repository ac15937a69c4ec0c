// Mouse actions on plots.
"use strict";

function is_cursor_event(type) {
  return type === "mousemove" || type === "mouseleave";
}

function select_with_mouse(u, axis) {
  const { left, width } = u.select;
  if (width < 4) return;
  axis.show(u.posToVal(left, "x"), u.posToVal(left + width, "x"));
  u.setSelect({ left: 0, width: 0, top: 0, height: 0 }, false);
}

/** Sets the time under the cursor from the plot that the mouse is over. The other plots follow. */
function point_with_mouse(u, axis) {
  if (u.cursor.event) axis.point_to(u.cursor.left >= 0 ? u.posToVal(u.cursor.left, "x") : null);
}

/** Moves the cursor of a plot to a time that the map or a key figure has set. */
function follow_cursor(u, axis) {
  if (document.querySelector(".over-time:hover")) return; // uPlot synchronises the plots
  const is_visible = axis.cursor !== null && axis.cursor >= axis.from && axis.cursor <= axis.to;
  u.cursor.event = null; // the cursor is no longer where the mouse was
  u.setCursor({ left: is_visible ? u.valToPos(axis.cursor, "x") : -10, top: 0 }, false);
}

/** The time under the cursor of a plot. A cursor that follows is at most half a pixel from its time. */
function cursor_time(u, axis) {
  const { left } = u.cursor;
  const is_at = axis.cursor !== null && Math.abs(u.valToPos(axis.cursor, "x") - left) < 0.5;
  return is_at ? axis.cursor : u.posToVal(left, "x");
}

function pan_with_mouse(event, u, axis) {
  const { from, to } = axis;
  const seconds_per_pixel = (to - from) / u.over.clientWidth;
  const move = (moved) => {
    const seconds = (event.clientX - moved.clientX) * seconds_per_pixel;
    axis.show(from + seconds, to + seconds);
  };
  follow_mouse(move);
}

/** Calls `move` for every mouse movement until the button is released. */
function follow_mouse(move) {
  document.addEventListener("mousemove", move);
  document.addEventListener("mouseup", () => document.removeEventListener("mousemove", move), { once: true });
}

/** The zoom factor for a turn of the wheel, in pixels or in lines. */
function wheel_factor(event) {
  const pixels = event.deltaMode === 0 ? event.deltaY : event.deltaY * 40;
  return Math.exp(Math.max(-200, Math.min(200, pixels)) * 0.002);
}

// Touch on plots and maps.
"use strict";

/** Calls `pan` with the pixels that one finger moves, and `zoom` with the factor and the place of two. */
function listen_to_touch(over, { pan, zoom }) {
  const fingers = new Map();
  const spread = ([first, second]) => Math.hypot(first.x - second.x, first.y - second.y);
  over.addEventListener("pointerdown", (event) => {
    if (event.pointerType === "mouse" || fingers.size === 2) return;
    fingers.set(event.pointerId, { x: event.clientX, y: event.clientY });
  });
  over.addEventListener("pointermove", (event) => {
    const finger = fingers.get(event.pointerId);
    if (!finger) return;
    const before = { ...finger };
    const spread_before = fingers.size === 2 ? spread([...fingers.values()]) : 0;
    Object.assign(finger, { x: event.clientX, y: event.clientY });
    if (fingers.size === 1) {
      pan(finger.x - before.x, finger.y - before.y);
      return;
    }
    const [first, second] = fingers.values();
    const box = over.getBoundingClientRect();
    const least = 20; // pixels between fingers
    const factor = Math.max(spread_before, least) / Math.max(spread([first, second]), least);
    zoom(factor, (first.x + second.x) / 2 - box.x, (first.y + second.y) / 2 - box.y);
  });
  for (const end of ["pointerup", "pointercancel"])
    over.addEventListener(end, (event) => fingers.delete(event.pointerId));
}

// The map of the live page, which follows the units.
"use strict";

class LiveMap extends MapView {
  constructor(paths, axis, parent) {
    super(paths, axis, parent, "east and north of the first position");
    this.is_following = true;
    this.button = element("button", { type: "button", className: "follow" });
    this.button.addEventListener("click", () => this.set_following(!this.is_following));
    this.u.root.closest("figure").prepend(this.button);
    this.set_following(true);
  }

  /** All points are drawn: they are few, and change. At first, there may be none. */
  find_coarse_points() {
    this.spacing = Infinity;
    if (!(this.extent.west <= this.extent.east)) this.extent = { west: 0, east: 0, south: 0, north: 0 };
  }

  set_following(is_following) {
    this.is_following = is_following;
    this.button.textContent = is_following ? "Stop following" : "Follow";
    if (is_following) this.zoom_factor = 1;
    this.draw();
  }

  show_all() {
    this.set_following(true);
  }

  move(right, down) {
    this.is_following &&= this.stop();
    super.move(right, down);
  }

  zoom(factor, x, y) {
    this.is_following &&= this.stop();
    super.zoom(factor, x, y);
  }

  stop() {
    this.button.textContent = "Follow";
    return false;
  }

  /** Fits the map to the paths in view. */
  fit() {
    const { from, to } = this.axis;
    const in_view = this.paths.map(({ times, values, north }) => {
      const range = [lower_bound(times, from), lower_bound(times, to + 1e-9)];
      return { values: values.subarray(...range), north: north.subarray(...range) };
    });
    const extent = extent_of(in_view);
    if (!(extent.west <= extent.east)) return;
    this.extent = extent;
    this.east = (extent.west + extent.east) / 2;
    this.north = (extent.south + extent.north) / 2;
  }

  draw() {
    if (this.is_following) this.fit();
    super.draw();
  }

  /** Only the time in view is drawn. */
  draw_rest() {}

  /** The position at the time under the cursor, or else the latest one in view. */
  marked_point(path) {
    const { cursor, to } = this.axis;
    let point = cursor === null ? last_row(path.times, to) : nearest_row(path.times, cursor);
    while (point >= 0 && Number.isNaN(path.values[point]) && path.times[point] > this.axis.from) --point;
    return point >= 0 && path.times[point] >= this.axis.from ? point : -1;
  }
}

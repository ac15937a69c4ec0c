// The map of the paths, with the same scale in both directions.
"use strict";

class MapView {
  constructor(paths, axis, parent, hint) {
    this.paths = paths;
    this.axis = axis;
    this.extent = extent_of(paths);
    this.find_coarse_points();
    this.east = (this.extent.west + this.extent.east) / 2;
    this.north = (this.extent.south + this.extent.north) / 2;
    this.zoom_factor = 1;
    const { figure, canvas } = plot_frame(
      "Paths (m)",
      hint,
      parent,
    );
    figure.classList.add("map");
    figure.dataset.plot = "Map";
    this.u = new uPlot(this.options(), [null, ...paths.map(() => [[0], [0]])], canvas);
    this.markers = paths.map((path) => this.create_marker(path));
    this.listen();
    complete_legend(this.u, paths);
    keep_fitting(this.u, canvas, () => this.draw());
    axis.range_listeners.push(() => this.draw());
    axis.cursor_listeners.push(() => this.place_markers());
  }

  /** Fine enough for a view of the whole map. Closer views draw all points. */
  find_coarse_points() {
    const { west, east, south, north } = this.extent;
    this.spacing = Math.max(east - west, north - south) / 3000;
    for (const path of this.paths) path.coarse = coarse_points(path, this.spacing);
  }

  options() {
    const facets = [{ scale: "x" }, { scale: "y" }];
    return {
      mode: 2,
      width: 300,
      height: 200,
      padding: [10, 24, 0, 0],
      scales: {
        x: { time: false, auto: false, range: () => this.range_east() },
        y: { auto: false, range: () => this.range_north() },
      },
      axes: [
        { ...axis_style(30), space: 80, values: (u, splits) => splits.map(plain) },
        { ...axis_style(58), values: (u, splits) => splits.map(plain) },
      ],
      series: [
        null,
        ...this.paths.map((path) => ({
          label: path.label,
          facets,
          stroke: () => unit_colour(path.unit),
          width: 2,
          points: { show: false },
          paths: (u) => this.draw_path(u.ctx, path),
        })),
      ],
      legend: { live: false },
      cursor: { show: false },
      hooks: { setSeries: [() => this.place_markers()] },
    };
  }

  /** The size of the plotting area in CSS pixels. From `bbox`: elements are resized only on drawing. */
  size() {
    const { width, height } = this.u.bbox;
    return { width: width / devicePixelRatio, height: height / devicePixelRatio };
  }

  /** Metres per CSS pixel, the same in both directions. */
  metres_per_pixel() {
    const { west, east, south, north } = this.extent;
    const { width, height } = this.size();
    const margin = 1.12;
    const least_m = 5;
    const fitting = Math.max((east - west) / width, (north - south) / height) * margin;
    return Math.max(fitting, least_m / height) / this.zoom_factor;
  }

  range_east() {
    const half = this.u ? (this.size().width / 2) * this.metres_per_pixel() : 1;
    return [this.east - half, this.east + half];
  }

  range_north() {
    const half = this.u ? (this.size().height / 2) * this.metres_per_pixel() : 1;
    return [this.north - half, this.north + half];
  }

  draw() {
    const [west, east] = this.range_east();
    const [south, north] = this.range_north();
    this.u.batch(() => {
      this.u.setScale("x", { min: west, max: east });
      this.u.setScale("y", { min: south, max: north });
    });
    this.place_markers();
  }

  /** Draws a path. The part that the time plots show is bold. */
  draw_path(ctx, path) {
    const { times } = path;
    const begin = lower_bound(times, this.axis.from);
    const end = lower_bound(times, this.axis.to);
    const { left, top, width, height } = this.u.bbox;
    ctx.save();
    ctx.beginPath();
    ctx.rect(left, top, width, height);
    ctx.clip();
    ctx.strokeStyle = ctx.fillStyle = unit_colour(path.unit);
    ctx.lineJoin = "round";
    this.draw_rest(ctx, path, begin, end);
    this.stroke(ctx, path, begin, end, 2.5);
    ctx.restore();
    return null;
  }

  /** Draws what is not in the view of the time plots. */
  draw_rest(ctx, path, begin, end) {
    ctx.globalAlpha = 0.35;
    this.stroke(ctx, path, 0, begin, 1.25);
    this.stroke(ctx, path, end, path.times.length, 1.25);
    ctx.globalAlpha = 1;
    this.mark_ends(ctx, path);
  }

  stroke(ctx, path, begin, end, width) {
    const { values, north, breaks } = path;
    const x_of = this.canvas_x();
    const y_of = this.canvas_y();
    const is_coarse = this.metres_per_pixel() > this.spacing;
    const [first, last] = is_coarse
      ? [begin, end].map((point) => lower_bound(path.coarse, point))
      : [begin, end];
    let next_break = lower_bound(breaks, begin);
    let pen_is_down = false;
    let [last_x, last_y] = [0, 0];
    ctx.lineWidth = width * devicePixelRatio;
    ctx.beginPath();
    for (let i = first; i < last; ++i) {
      const point = is_coarse ? path.coarse[i] : i;
      for (; breaks[next_break] <= point; ++next_break) pen_is_down = false;
      if (Number.isNaN(values[point])) continue;
      const x = x_of(values[point]);
      const y = y_of(north[point]);
      // Skips steps of less than a pixel, which are most of a long path.
      if (pen_is_down && Math.abs(x - last_x) + Math.abs(y - last_y) < 0.7) continue;
      if (pen_is_down) ctx.lineTo(x, y);
      else ctx.moveTo(x, y);
      pen_is_down = true;
      [last_x, last_y] = [x, y];
    }
    ctx.stroke();
  }

  /** A function from metres to canvas pixels, cheap enough to call for every point. */
  canvas_x() {
    const [west, east] = this.range_east();
    const { left, width } = this.u.bbox;
    return (value) => left + ((value - west) / (east - west)) * width;
  }

  canvas_y() {
    const [south, north] = this.range_north();
    const { top, height } = this.u.bbox;
    return (value) => top + ((north - value) / (north - south)) * height;
  }

  mark_ends(ctx, { values, north }) {
    const first = values.findIndex((value) => !Number.isNaN(value));
    const last = values.findLastIndex((value) => !Number.isNaN(value));
    const x_of = this.canvas_x();
    const y_of = this.canvas_y();
    ctx.lineWidth = 2 * devicePixelRatio;
    for (const i of [first, last]) {
      ctx.beginPath();
      ctx.arc(x_of(values[i]), y_of(north[i]), 4.5 * devicePixelRatio, 0, 2 * Math.PI);
      if (i === first) {
        ctx.save();
        ctx.fillStyle = style_colour("--card");
        ctx.fill();
        ctx.restore();
        ctx.stroke();
      } else {
        ctx.fill();
      }
    }
  }

  create_marker(path) {
    const marker = document.createElement("div");
    marker.className = "marker";
    marker.dataset.unit = path.unit;
    this.u.over.append(marker);
    return marker;
  }

  /** The point of a path that is marked; -1 if none is. */
  marked_point(path) {
    return this.axis.cursor === null ? -1 : point_at(path, this.axis.cursor);
  }

  /** Marks the position of each unit at the time under the cursor. */
  place_markers() {
    this.markers?.forEach((marker, i) => {
      const path = this.paths[i];
      const point = this.marked_point(path);
      const visible = point >= 0 && !Number.isNaN(path.values[point]) && this.u.series[i + 1].show;
      marker.hidden = !visible;
      if (!visible) return;
      const x = this.canvas_x()(path.values[point]) - this.u.bbox.left;
      const y = this.canvas_y()(path.north[point]) - this.u.bbox.top;
      marker.style.transform = `translate(${x / devicePixelRatio}px, ${y / devicePixelRatio}px)`;
      marker.style.background = unit_colour(path.unit);
    });
  }

  listen() {
    const { over } = this.u;
    over.addEventListener("dblclick", () => this.show_all());
    over.addEventListener("mousemove", (event) =>
      this.axis.point_to(this.time_near(event.offsetX, event.offsetY)),
    );
    over.addEventListener("mouseleave", () => this.axis.point_to(null));
    over.addEventListener("wheel", (event) => this.zoom_with_wheel(event), { passive: false });
    over.addEventListener("mousedown", (event) => {
      event.preventDefault();
      let last = event;
      follow_mouse((moved) => {
        this.move(moved.clientX - last.clientX, moved.clientY - last.clientY);
        last = moved;
      });
    });
    listen_to_touch(over, {
      pan: (right, down) => this.move(right, down),
      zoom: (factor, x, y) => this.zoom(factor, x, y),
    });
  }

  /** Moves the map by pixels. */
  move(right, down) {
    const metres = this.metres_per_pixel();
    this.east -= right * metres;
    this.north += down * metres;
    this.draw();
  }

  /** The time at which a unit was nearest to a point on the map, in pixels; null if none came near. */
  time_near(x, y) {
    const metres = this.metres_per_pixel();
    const east = this.range_east()[0] + x * metres;
    const north_there = this.range_north()[1] - y * metres;
    const near_pixels = 25;
    let nearest = (near_pixels * metres) ** 2;
    let time = null;
    for (const { times, values, north } of this.paths)
      for (let i = 0; i < times.length; ++i) {
        const distance = (values[i] - east) ** 2 + (north[i] - north_there) ** 2;
        if (distance < nearest) {
          nearest = distance;
          time = times[i];
        }
      }
    return time;
  }

  zoom_with_wheel(event) {
    event.preventDefault();
    this.zoom(wheel_factor(event), event.offsetX, event.offsetY);
  }

  /** Zooms around a point in pixels. A factor below 1 enlarges. */
  zoom(factor, x, y) {
    const before = this.metres_per_pixel();
    this.zoom_factor = Math.min(Math.max(this.zoom_factor / factor, 0.5), 1e5);
    const change = before - this.metres_per_pixel();
    const { width, height } = this.size();
    this.east += (x - width / 2) * change;
    this.north -= (y - height / 2) * change;
    this.draw();
  }

  show_all() {
    this.east = (this.extent.west + this.extent.east) / 2;
    this.north = (this.extent.south + this.extent.north) / 2;
    this.zoom_factor = 1;
    this.draw();
  }
}

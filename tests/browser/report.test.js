// What a user sees of a report, and does with it.

import assert from "node:assert/strict";
import { mkdirSync, readFileSync, writeFileSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { drawn_plots, launch, next_drawing, open_report } from "./browser.js";
import { point_on, ranges, temporary_folder } from "./browser.js";
import { correct_checksums, keep_frames, run_rtrange } from "./captures.js";

const folder = temporary_folder();
const report_file = join(folder, "run.html");
const screenshots = process.env.SCREENSHOTS;
let browser;
let page;

before(async () => {
  mkdirSync(screenshots, { recursive: true });
  run_rtrange("simulate", join(folder, "whole.pcap"), "--duration", "60", "--targets", "3");
  keep_frames(join(folder, "whole.pcap"), join(folder, "run.pcap"), (time) => time < 20 || time >= 22);
  run_rtrange("report", join(folder, "run.pcap"), "--output", report_file);
  browser = await launch();
  page = await open_report(browser, report_file);
});

after(() => browser?.close());

/** Opens a report for what `look` does with its page, which may cause no error and no request. */
async function with_page(file, view, look) {
  const shown = await open_report(browser, file, view);
  await look(shown);
  assert.deepEqual(shown.faults, []);
  await shown.close();
}

/** Draws captures, given with the options, and returns the report. */
function draw_report(options) {
  const file = join(folder, "other.html");
  run_rtrange("report", ...options.map((option) => option.replace(/^\w+\.pcap$/, join(folder, "$&"))),
    "--output", file, "--overwrite");
  return file;
}

/** Draws captures, given with the options, and opens the report. */
async function with_report(options, look) {
  await with_page(draw_report(options), {}, look);
}

const sizes = [
  [1920, 1080],
  [1366, 768],
];
const card = (shown, title) => shown.locator(`article[data-card="${title}"]`);

function assert_all_drawn(plots) {
  assert.equal(plots.length, 19);
  for (const { title, pixels } of plots) {
    const counts = Object.values(pixels);
    const words = `${title}: ${JSON.stringify(pixels)}`;
    assert.equal(counts.length, /range|collision/i.test(title) ? 3 : 4, words);
    // The paths of the cars lie over one another, and so do some of the lines.
    assert.ok(Math.max(...counts) > 100, words);
    if (/range$|Speed/.test(title)) assert.ok(Math.min(...counts) > 50, words);
  }
}

for (const [width, height] of sizes)
  for (const scheme of ["light", "dark"])
    test(`draws every plot at ${width}×${height}, ${scheme}, without an error or a request`, () =>
      with_page(report_file, { width, height, scheme }, async (shown) => {
        assert_all_drawn(await drawn_plots(shown));
        await shown.mouse.move(...(await point_on(shown, "Longitudinal range", 0.6, 0.5)));
        await next_drawing(shown);
        await shown.screenshot({ path: join(screenshots, `report-${width}x${height}-${scheme}.png`) });
      }));

test("switches between light and dark", async () => {
  const background = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
  const light = await background();
  await page.click("#theme");
  await next_drawing(page);
  assert.notEqual(await background(), light);
  assert_all_drawn(await drawn_plots(page));
  await page.click("#theme");
  assert.equal(await background(), light);
});

test("names the run, the units, the outcomes of frames and the gaps", async () => {
  assert.equal(await page.locator("h1").innerText(), "run.pcap");
  assert.match(
    await page.locator("#subtitle").innerText(),
    /2026-01-05 10:00:00\.000 UTC.*60\.0 s.*view: measured/,
  );
  assert.equal(
    await page.locator("#notes").innerText(),
    "There are no packets from 19.990 s to 22.000 s (2.010 s).",
  );
  const units = await card(page, "Units identified").innerText();
  for (const text of [/Hunter\s+195\.0\.0\.10/, /Target 1\s+195\.0\.0\.21/, /Target 3\s+195\.0\.0\.23/])
    assert.match(units, text);
  assert.match(units, /Not plotted: 1 NCOM row from before its sender was identified as a unit\./);
  assert.match(await card(page, "Frames").innerText(), /decoded[^]*116\s+foreign: not IPv4/);
  const gaps = await card(page, "Gaps and resets").innerText();
  assert.match(gaps, /7 gaps/); // of NCOM from four units and range packets about three
  assert.match(gaps, /Hunter, NCOM\s+19\.990 s\s+for 2\.010 s/);
  assert.match(await card(page, "Rows").innerText(), /Target 2\s+5.799 · 96\.7 Hz\s+5.800 · 96\.7 Hz/);
  assert.match(await page.locator("footer").innerText(), /rtrange \d+\.\d+.*uPlot, MIT licence/);
});

test("breaks the lines at gaps", async () => {
  const columns_with_line = () =>
    page.evaluate(() => {
      const plot = report.plots[0];
      const { left, top, width, height } = plot.bbox;
      const data = pixels_of(plot.ctx.canvas, left, top, width, height);
      const is_coloured = (x, y) => Math.abs(data[4 * (y * width + x)] - data[4 * (y * width + x) + 2]) > 60;
      return Array.from({ length: width }, (_, x) =>
        Array.from({ length: height }, (_, y) => y).some((y) => is_coloured(x, y)),
      );
    });
  for (const [from, to] of [
    [0, 60],
    [19.5, 22.5],
    [19.98, 22.02],
  ]) {
    await page.evaluate(([begin, end]) => report.axis.show(begin, end), [from, to]);
    await next_drawing(page);
    const columns = await columns_with_line();
    const at = (time) => columns[Math.round(((time - from) / (to - from)) * (columns.length - 1))];
    assert.ok(!at(20.5) && !at(21) && !at(21.5), `in view: ${from} to ${to}`);
    assert.ok(columns.includes(true));
  }
  await page.evaluate(() => report.axis.show_all());
  await next_drawing(page);
});

test("zooms, pans and resets all plots together", async () => {
  const span = async () => {
    await next_drawing(page);
    const all = await ranges(page);
    for (const range of all) assert.deepEqual(range, all[0]);
    return all[0];
  };
  const whole = await span();
  await page.locator('figure[data-plot="Heading"]').scrollIntoViewIfNeeded();
  const over = await point_on(page, "Heading", 0.25, 0.5);
  await page.mouse.move(...over);
  await page.mouse.wheel(0, -300);
  const zoomed = await span();
  const quarter = ([from, to]) => from + 0.25 * (to - from);
  assert.ok(zoomed[1] - zoomed[0] < 0.8 * (whole[1] - whole[0]));
  assert.ok(Math.abs(quarter(zoomed) - quarter(whole)) < 0.3, "what is under the mouse stays there");

  await page.keyboard.down("Shift");
  await page.mouse.down();
  await page.mouse.move(over[0] - 50, over[1], { steps: 4 });
  await page.mouse.up();
  await page.keyboard.up("Shift");
  const panned = await span();
  assert.ok(panned[0] > zoomed[0]);
  assert.ok(Math.abs(panned[1] - panned[0] - (zoomed[1] - zoomed[0])) < 1e-6);

  await page.mouse.dblclick(...over);
  assert.deepEqual(await span(), whole);

  await page.mouse.move(...over);
  await page.mouse.down();
  await page.mouse.move(...(await point_on(page, "Heading", 0.5, 0.5)), { steps: 4 });
  await page.mouse.up();
  const selected = await span();
  assert.ok(
    Math.abs(selected[0] - quarter(whole)) < 0.3 && Math.abs(selected[1] - (whole[0] + whole[1]) / 2) < 0.3,
    `${selected}`,
  );

  await page.click("#reset");
  assert.deepEqual(await span(), whole);
  await page.focus("#plots");
  await page.keyboard.press("+");
  await page.keyboard.press("ArrowRight");
  const with_keys = await span();
  assert.ok(with_keys[0] > whole[0] && with_keys[1] - with_keys[0] < whole[1] - whole[0]);
  await page.keyboard.press("0");
  assert.deepEqual(await span(), whole);
});

test("shares one time cursor among all plots and the map", async () => {
  await page.evaluate(() => scrollTo(0, 0));
  await page.mouse.move(...(await point_on(page, "Longitudinal range", 0.5, 0.5)));
  await next_drawing(page);
  assert.match(
    await page.locator("#readout").innerText(),
    /^(29|30)\.\d{3} s  ·  2026-01-05 10:00:(29|30)\.\d{3} UTC$/,
  );
  const legends = await page.evaluate(() =>
    report.plots.map((plot) =>
      [...plot.root.querySelectorAll(".u-value")].slice(1).map((value) => value.textContent),
    ),
  );
  for (const [i, values] of legends.slice(0, 10).entries())
    if (i !== 4)
      assert.ok(
        values.every((value) => /^−?\d+\.\d\d$/.test(value)),
        `${values}`,
      );
  const readout = (title) => page.locator(`figure[data-plot="${title}"] .u-value`).nth(1).innerText();
  assert.equal(await readout("Velocity mode"), "RTK float");
  assert.equal(await readout("Navigation status"), "locked");
  assert.equal(await readout("Position mode"), "RTK integer");
  assert.equal(await readout("Satellites"), "14");
  // The third target is as far from the hunter as its ranges say.
  const markers = await page
    .locator(".marker:visible")
    .evaluateAll((all) => all.map((marker) => marker.getBoundingClientRect()));
  const distance = Math.hypot(markers[3].x - markers[0].x, markers[3].y - markers[0].y);
  const metres_per_pixel = await page.evaluate(() => report.map.metres_per_pixel());
  const range = Math.hypot(...legends.slice(0, 2).map((values) => Number(values[2].replace("−", "-"))));
  assert.ok(Math.abs(distance * metres_per_pixel - range) < 2, `${distance * metres_per_pixel} m, ${range} m`);
  assert.equal(await page.locator(".marker:visible").count(), 4);
  await page.mouse.move(2, 2);
  await next_drawing(page);
  assert.equal(await page.locator(".marker:visible").count(), 0);

  // The end of the hunter's path, where the mouse on the map points to.
  const end = await page.evaluate(() => {
    const { map } = report;
    const box = map.u.over.getBoundingClientRect();
    const { values, north } = map.paths[0];
    return [box.x + map.u.valToPos(values.at(-1), "x"), box.y + map.u.valToPos(north.at(-1), "y")];
  });
  await page.mouse.move(...end);
  await next_drawing(page);
  assert.match(await page.locator("#readout").innerText(), /^(59|6\d|5[5-9])\.\d{3} s/);
  assert.match(
    await page.locator('figure[data-plot="Lateral range rate"] .u-value').nth(1).innerText(),
    /^−?\d/,
  );
  await page.mouse.move(2, 2);
});

test("hides a trace by its legend, with the mouse and with the keyboard", async () => {
  const speed = async () => (await drawn_plots(page)).find(({ title }) => title.startsWith("Speed")).pixels;
  const before_click = await speed();
  const label = page.locator('figure[data-plot^="Speed"] .u-legend th', { hasText: "Target 2" });
  await label.click();
  await next_drawing(page);
  const hidden = await speed();
  assert.equal(hidden.target2, 0);
  assert.ok(hidden.target1 > 50);
  await label.press("Enter");
  await next_drawing(page);
  assert.equal((await speed()).target2, before_click.target2);
});

/** As the axes of the map are labelled. */
async function assert_one_scale(shown, when) {
  const [east, north, drawn] = await shown.evaluate(() => {
    const { u } = report.map;
    const metres = (key, pixels) => (u.scales[key].max - u.scales[key].min) / pixels;
    return [
      metres("x", u.over.clientWidth),
      metres("y", u.over.clientHeight),
      report.map.metres_per_pixel(),
    ];
  });
  for (const metres of [east, north])
    assert.ok(Math.abs(metres / drawn - 1) < 0.01, `${when}: ${east} and ${north}, drawn with ${drawn}`);
}

test("labels the map with the one scale that it is drawn with, whatever its size", () =>
  with_page(report_file, {}, async (shown) => {
    await assert_one_scale(shown, "at first");
    for (const width of [1366, 1920, 900]) {
      await shown.setViewportSize({ width, height: 768 });
      await next_drawing(shown);
      await assert_one_scale(shown, `${width} pixels wide`);
    }
    await shown.emulateMedia({ media: "print" });
    await next_drawing(shown);
    await assert_one_scale(shown, "printed");
  }));

test("moves and zooms the map on its own", async () => {
  await page.locator('figure[data-plot="Map"]').scrollIntoViewIfNeeded();
  const view = () => page.evaluate(() => [report.map.east, report.map.north, report.map.metres_per_pixel()]);
  const time = await ranges(page);
  const whole = await view();
  const from = await point_on(page, "Map", 0.5, 0.5);
  await page.mouse.move(...from);
  await page.mouse.wheel(0, -400);
  await page.mouse.down();
  await page.mouse.move(from[0] + 40, from[1], { steps: 3 });
  await page.mouse.up();
  await next_drawing(page);
  const moved = await view();
  assert.ok(moved[2] < 0.8 * whole[2]);
  assert.ok(Math.abs(moved[0] - (whole[0] - 40 * moved[2])) < 2 * moved[2]);
  await assert_one_scale(page, "zoomed");
  await page.mouse.dblclick(...from);
  assert.deepEqual(await view(), whole);
  assert.deepEqual(await ranges(page), time);
});

test("keeps every peak when it thins, and draws no line across the wrap of an angle", async () => {
  const result = await page.evaluate(() => {
    const count = 200000;
    const times = Float64Array.from({ length: count }, (_, i) => i / 100);
    const values = Float32Array.from(times, (time) => Math.sin(time));
    values[123456] = 50;
    values[54321] = -50;
    const [, thinned] = plot_data([make_trace("hunter", "", times, values, false)], 0, 2000, 700);
    const headings = values.map((_, i) => (i / 500) % 360);
    const [, angles] = plot_data([make_trace("hunter", "", times, headings, true)], 0, 2000, 700);
    const exact = plot_data([make_trace("hunter", "", times, headings, true)], 1799, 1801, 700)[1];
    const largest_step = (list) => {
      let last = null;
      let largest = 0;
      for (const value of list) {
        if (value === undefined) continue;
        if (value !== null && last !== null) largest = Math.max(largest, Math.abs(value - last));
        last = value;
      }
      return largest;
    };
    const drawn = thinned.filter((value) => value != null);
    const extremes = [Math.max(...drawn), Math.min(...drawn)];
    return [thinned.length, ...extremes, exact, largest_step(angles), largest_step(exact)];
  });
  assert.deepEqual(result.slice(0, 3), [2100, 50, -50]);
  const [exact, ...steps] = result.slice(3);
  assert.ok(exact.length > 200 && exact.length < 210, `${exact.length} points of 200 in view`);
  for (const step of steps) assert.ok(step < 10, `a step of ${step} degrees`);
});

test("plots named fields, those of RCOM where no unit has them", async () => {
  await with_report(["run.pcap", "--fields", "altitude,lane_d5,range_longitudinal"], async (shown) => {
    assert.deepEqual(
      (await drawn_plots(shown)).slice(1).map(({ title, pixels }) => [title, ...Object.keys(pixels)]),
      [
        ["altitude", "hunter", "target1", "target2", "target3"],
        ["range_longitudinal", "target1", "target2", "target3"],
        ["lane_d5", "rcom"],
      ],
    );
    const rows = await shown.evaluate(() => {
      const { time, altitude } = columns_by_unit(report.streams).get("target1");
      return [time.length, is_ascending(time), altitude.filter((value) => value > 0).length];
    });
    // Range packets say nothing of the altitude before the first NCOM.
    assert.deepEqual(rows, [11599, true, 11598]);
  });
  await with_report(["run.pcap", "--fields", "range_longitudinal", "--units", "rcom"], async (shown) => {
    const [{ pixels }] = await drawn_plots(shown);
    assert.deepEqual(Object.keys(pixels), ["rcom"]);
  });
});

test("names senders that are no unit by their addresses, and coded values by name", async () => {
  const is_rcom = (frame) => frame.length > 40 && frame.readUInt16BE(36) === 3003;
  keep_frames(join(folder, "whole.pcap"), join(folder, "ncom.pcap"), (time, frame) => !is_rcom(frame));
  const senders = ["195.0.0.10", "195.0.0.21", "195.0.0.22", "195.0.0.23"];
  await with_report(["ncom.pcap"], async (shown) => {
    assert.equal(
      await shown.locator("#notes").innerText(),
      `No RCOM packet named these senders as units: ${senders.join(", ")}.`,
    );
    const plots = await drawn_plots(shown);
    assert.equal(plots.length, 14); // all without those of ranges
    for (const { pixels } of plots) assert.deepEqual(Object.keys(pixels), senders);
    const speeds = Object.values(plots.find(({ title }) => title.startsWith("Speed")).pixels);
    assert.ok(Math.min(...speeds) > 50, `${speeds}`);
    const colours = await shown.evaluate((senders) => senders.map(unit_colour), senders);
    assert.equal(new Set(colours).size, senders.length, `${colours}`);
  });
  await with_report(["ncom.pcap", "--fields", "position_mode,satellites"], async (shown) => {
    const [modes, satellites] = await shown.evaluate(() => report.plots.map(({ axes }) => axes[1]._values));
    assert.deepEqual(modes, ["RTK float", "RTK integer"]);
    assert.ok(satellites.length > 2 && satellites.every((value) => /^\d+$/.test(value)), `${satellites}`);
  });
});

test("leaves no trace of a line in breaks", async () => {
  run_rtrange("simulate", join(folder, "oncoming.pcap"), "--scenario", "oncoming", "--duration", "55");
  await with_report(["oncoming.pcap"], async (shown) => {
    // The hunter's heading wraps, and times to collision end at zero and begin again far above the plot.
    const highest = await shown.evaluate(() =>
      [report.plots[4], report.plots[9]].map(({ ctx, bbox: { left, top, width, height } }) => {
        const data = pixels_of(ctx.canvas, left, top, width, height);
        const coloured = new Array(width).fill(0);
        for (let i = 0; i < data.length; i += 4)
          if (Math.abs(data[i] - data[i + 2]) > 20) ++coloured[(i / 4) % width];
        return Math.max(...coloured) / height;
      }),
    );
    assert.ok(Math.max(...highest) < 0.3, `${highest}`);
  });
});

test("shows its cards whole", async () => {
  run_rtrange("simulate", join(folder, "four.pcap"), "--duration", "20", "--targets", "4");
  for (const options of [[], ["--fields", "altitude,lane_d5,range_longitudinal"]])
    await with_report(["four.pcap", ...options], async (shown) => {
      for (const [width, height] of sizes) {
        await shown.setViewportSize({ width, height });
        await shown.evaluate(() => scrollTo(0, 0));
        await shown.mouse.move(...(await point_on(shown, options.length > 0 ? "altitude" : "Longitudinal range", 0.5, 0.5)));
        await next_drawing(shown);
        const clipped = await shown.evaluate(() =>
          [...document.querySelectorAll("article")]
            .filter((card) => card.scrollWidth > card.clientWidth || card.scrollHeight > card.clientHeight)
            .map((card) => card.dataset.card),
        );
        assert.deepEqual(clipped, [], `${width} pixels wide, ${options}`);
        assert.equal(await shown.locator("article").count(), options.length > 0 ? 5 : 7);
        const [legends, beyond_edge] = await shown.evaluate(() => [
          report.plots.map(({ root }) => root.querySelector(".u-legend").offsetHeight),
          report.plots.map(({ ctx, bbox, axes: [time] }) => {
            const half_a_label = ctx.measureText(time._values.at(-1)).width / 2;
            return bbox.left + bbox.width + half_a_label - ctx.canvas.width;
          }),
        ]);
        assert.ok(Math.max(...legends) < 30, `one line for each legend: ${legends}`);
        assert.ok(Math.max(...beyond_edge) < 0, `whole labels of time: ${beyond_edge}`);
        const name = `report-four${options.length > 0 ? "-fields" : ""}-${width}x${height}.png`;
        await shown.screenshot({ path: join(screenshots, name), fullPage: true });
      }
    });
});

test("says where the time to collision is cut off", async () => {
  const { caption, highest } = await page.evaluate(() => ({
    caption: document.querySelector('figure[data-plot^="Time to collision"] figcaption').innerText,
    highest: report.plots[4].scales.y.max,
  }));
  assert.match(caption, new RegExp(`up to ${highest} s`));
});

test("says when no time to collision is in the range of the plot", async () => {
  const [approaching, not_approaching] = await page.evaluate(() => {
    const { times, values } = time_plots_of(report.summary, report.streams, [])[4].traces[0];
    const is_below = (begin) => {
      const [from, to] = [begin, begin + 1].map((time) => lower_bound(times, time));
      return values.subarray(from, to).some((value) => value <= 20);
    };
    const begins = Array.from({ length: 18 }, (_, i) => i);
    return [begins.find(is_below), begins.find((begin) => !is_below(begin))];
  });
  await page.locator('figure[data-plot^="Speed"] .u-legend').scrollIntoViewIfNeeded();
  const words_in = async (from) => {
    await page.evaluate((begin) => report.axis.show(begin, begin + 1), from);
    await next_drawing(page);
    return page.evaluate(() => {
      const { ctx, bbox } = report.plots[4];
      const data = pixels_of(ctx.canvas, bbox.left, bbox.top, bbox.width, bbox.height);
      const muted = style_colour("--muted").match(/\w\w/g).map((part) => parseInt(part, 16));
      let pixels = 0;
      for (let i = 0; i < data.length; i += 4) pixels += muted.every((part, k) => data[i + k] === part);
      return pixels;
    });
  };
  assert.equal(await words_in(approaching), 0);
  assert.ok((await words_in(not_approaching)) > 20);
  await page.evaluate(() => report.axis.show_all());
});

/** Whether a frame is NCOM on its own port, from the sender with an address that ends with `address`. */
function is_ncom_of(address, frame) {
  return frame.length === 114 && frame.readUInt16BE(36) === 3000 && frame[29] === address;
}

test("draws zeros that packets have brought, and no others", async () => {
  keep_frames(join(folder, "whole.pcap"), join(folder, "zeros.pcap"), (time, frame) => {
    if (time > 5 && time < 6 && is_ncom_of(10, frame)) frame.fill(0, 42 + 18, 42 + 21);
    return true;
  });
  await with_report(["zeros.pcap", "--from", "5.5"], async (shown) => {
    const values = await shown.evaluate(() => {
      const plots = time_plots_of(report.summary, report.streams, report.qualities);
      const { values } = plots.find(({ field }) => field === "rate_z").traces[0];
      return [...values.slice(0, 52)];
    });
    assert.ok(values.slice(0, 49).every((value) => value === 0), `${values}`);
    assert.ok(Math.abs(values[51]) > 1, `${values}`);
  });
  // Status values come later than the first NCOM.
  const accuracies = await page.evaluate(() =>
    report.qualities.map(({ columns: { position_accuracy_horizontal: [first, ...others] } }) => [
      first,
      Math.min(...others.filter((value) => !Number.isNaN(value))),
    ]),
  );
  assert.equal(accuracies.length, 4);
  for (const [first, lowest] of accuracies) assert.ok(Number.isNaN(first) && lowest > 0.01);
});

/**
 * From 40 s to 44 s: target 1 locks again, except in its wrapped NCOM, the hunter's velocity mode is SPS,
 * and at the end, the checksums of target 2 are wrong.
 */
function spoil(time, frame) {
  if (time < 40 || time >= 44) return true;
  const ncom = frame.subarray(42);
  if (is_ncom_of(21, frame)) ncom[21] = 3;
  if (is_ncom_of(10, frame) && ncom[62] === 0) ncom[69] = 3;
  if (is_ncom_of(21, frame) || is_ncom_of(10, frame)) correct_checksums(ncom);
  if (is_ncom_of(22, frame) && time >= 43.9) ++ncom[71];
  return true;
}

test("judges the data of each unit", async () => {
  keep_frames(join(folder, "whole.pcap"), join(folder, "bad.pcap"), spoil);
  await with_report(["bad.pcap", "--from", "1"], async (shown) => {
    const quality = (await card(shown, "Data quality").innerText()).replaceAll("\u00a0", " ").replaceAll("\u2060", "");
    const modes = "RTK integer 86\\.5 %, RTK float 13\\.5 %\\s+RTK float";
    const rest = "1–10 s\\s+0\\s+0";
    for (const row of [
      `Hunter\\s+0\\.028–0\\.566 m\\s+0\\.030–0\\.600 m\\s+${modes} 93\\.4 %, SPS 6\\.6 %.*locked\\s+10–14\\s+${rest}\\s+11\\.90 s`,
      `Target 1.*${modes}\\s.*locked 94\\.9 %, locking 5\\.1 %\\s+9–14\\s+${rest}\\s+10\\.99 s \\(18\\.6 %\\)`,
      `Target 2.*${modes}\\s.*locked\\s+9–13\\s+1–10 s\\s+8\\s+0\\s+8\\.07 s`,
      `Target 3.*${modes}\\s.*locked\\s+9–14\\s+${rest}\\s+7\\.99 s`,
    ])
      assert.match(quality, new RegExp(row));
    assert.match(quality, /velocity mode below differential.*fewer than 6 satellites/);
    const periods = await card(shown, "Bad data").innerText();
    assert.match(periods, /Hunter\s+12\.\d\d\d s for 7\.990 s: position accuracy/);
    assert.match(periods, /Hunter\s+40\.\d\d\d s for [34]\.\d\d\d s: velocity mode/);
    assert.match(periods, /Target 1\s+40\.\d\d\d s for \d\.\d\d\d s: navigation status/);
    assert.match(periods, /Target 2\s+43\.9\d\d s for 0\.\d\d\d s: checksum/);
    assert.doesNotMatch(periods, /Target 3\s+4/);

    /** Whether a colour is in a plot at a time, above the axes and between them. */
    const is_marked = (title, time, colour) =>
      shown.evaluate(
        ([title, time, colour]) => {
          const root = document.querySelector(`figure[data-plot^="${title}"]`);
          const { ctx, bbox, scales } = report.plots.find((plot) => root.contains(plot.root));
          const x = bbox.left + ((time - scales.x.min) / (scales.x.max - scales.x.min)) * bbox.width;
          const wanted = (colour === "bad" ? style_colour("--bad") : unit_colour(colour))
            .match(/\w\w/g)
            .map((part) => parseInt(part, 16));
          const has_colour = (top, height) => {
            const data = pixels_of(ctx.canvas, Math.round(x), top, 1, height);
            return data.some((_, i) => i % 4 === 0 && wanted.every((part, k) => Math.abs(data[i + k] - part) < 3));
          };
          return [has_colour(0, bbox.top), has_colour(bbox.top, bbox.height)];
        },
        [title, time, colour],
      );
    for (const [title, time, colour, marked] of [
      ["Satellites", 42, "bad", [false, true]],
      ["Satellites", 46, "bad", [false, false]],
      ["Speed", 42, "bad", [false, false]],
      ["Speed", 42, "hunter", [true, false]],
      ["Speed", 46, "hunter", [false, false]],
      ["Lateral range rate", 42, "hunter", [true, false]], // ranges refer to the hunter
      ["Lateral range rate", 42, "target2", [false, false]],
    ]) {
      const [above, between] = await is_marked(title, time, colour);
      const words = `${title}, ${time} s, ${colour}`;
      assert.equal(above, marked[0], words);
      if (colour === "bad") assert.equal(between, marked[1], words);
    }
  });
});

test("takes unknown values for neither good nor bad", async () => {
  const periods = await page.evaluate(() => {
    const time = Float64Array.from({ length: 10 }, (_, i) => i / 10);
    const status = Float32Array.of(NaN, NaN, 4, 3, 3, NaN, 4, 4, 3, 4);
    return periods_beyond(quality_limits[0], status, time).map(({ from, to }) => [from, to]);
  });
  const expected = [[0.3, 0.5], [0.8, 0.9]];
  assert.equal(periods.length, expected.length);
  expected.flat().forEach((time, i) => assert.ok(Math.abs(periods.flat()[i] - time) < 1e-6, `${periods}`));
});

test("names the gaps after which a new decoder was started", async () => {
  const assert_note = (keep, text) => {
    keep_frames(join(folder, "whole.pcap"), join(folder, "gaps.pcap"), keep);
    return with_report(["gaps.pcap"], async (shown) =>
      assert.match(await shown.locator("#notes").innerText(), text),
    );
  };
  await assert_note(
    (time) => time < 10 || time > 19.995,
    /^A new decoder was started at 20\.000 s, after a gap of 10\.010 s\.$/m,
  );
  await assert_note(
    (time) => (time + 0.005) % 8 < 1,
    /^New decoders were started after gaps, at 8\.000 s, 16\.000 s, .*40\.000 s and 2 more times\.$/m,
  );
});

test("sorts out steps back in time", async () => {
  const [late, early, stepping] = ["late", "early", "stepping"].map((name) => join(folder, `${name}.pcap`));
  keep_frames(join(folder, "whole.pcap"), late, (time) => time > 30);
  keep_frames(join(folder, "whole.pcap"), early, (time) => time < 40);
  const file_header = 24;
  writeFileSync(stepping, Buffer.concat([readFileSync(late), readFileSync(early).subarray(file_header)]));
  await with_report(["stepping.pcap"], async (shown) => {
    assert_all_drawn(await drawn_plots(shown));
    assert.match(
      await card(shown, "Gaps and resets").innerText(),
      /1 reset: time steps back[^]*from\s+29\.9\d\d s\s+back to\s+−30\.0\d\d s/,
    );
    const [from, to] = ["29\\.9\\d\\d s", "−30\\.0\\d\\d s"];
    assert.match(await shown.locator("#notes").innerText(), new RegExp(`steps back from ${from} to ${to};`));
    assert.ok(await shown.evaluate(() => report.streams.every(({ values }) => is_ascending(values.time))));
  });
});

test("says what is missing from a run", async () => {
  keep_frames(join(folder, "whole.pcap"), join(folder, "start.pcap"), (time) => time < 1e-6);
  keep_frames(
    join(folder, "whole.pcap"),
    join(folder, "foreign.pcap"),
    (time, frame) => frame.readUInt16BE(12) !== 0x0800,
  );
  const lane_length = 175;
  keep_frames(join(folder, "whole.pcap"), join(folder, "lane.pcap"), (time, frame) => frame.length === lane_length);
  for (const [options, reason] of [
    [["whole.pcap", "--from", "100"], /no rows match --from 100/],
    [["foreign.pcap"], /there was no NCOM/],
    [["lane.pcap"], /only RCOM rows/],
  ])
    assert.throws(() => draw_report(options), reason);
  for (const [options, text, has_plots] of [
    [["start.pcap"], /^No RCOM packet named these senders as units: 195\.0\.0\.10\.$/m, true],
    [["whole.pcap", "--to", "0.00002"], /^Not plotted: 1 NCOM row from before[^]*^Nothing to plot\.$/m, false],
  ])
    await with_report(options, async (shown) => {
      const words = await shown.locator("body").innerText();
      assert.match(words, text);
      assert.match(words, /2026-01-05 10:00:00/);
      assert.doesNotMatch(words, /\d{5}\.\d{3} s/, "times count from the start of the run");
      assert.equal((await shown.locator("figure").count()) > 0, has_plots);
      assert.equal(await shown.locator("#toolbar").isVisible(), has_plots);
      assert.equal(/No gaps/.test(words), has_plots);
    });
});

test("names a capture that ends in the middle of a frame", async () => {
  const [cut, file] = ["cut.pcap", "cut.html"].map((name) => join(folder, name));
  writeFileSync(cut, readFileSync(join(folder, "whole.pcap")).subarray(0, 500_000));
  assert.throws(() => run_rtrange("report", cut, "--output", file));
  await with_page(file, {}, async (shown) =>
    assert.match(await shown.locator("#notes").innerText(), /cut\.pcap' is broken after frame \d+/),
  );
});

test("has had no error and no request in all of this", () => assert.deepEqual(page.faults, []));

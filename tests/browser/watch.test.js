// What a viewer sees of a run while it happens, and does with it.

import assert from "node:assert/strict";
import { mkdirSync } from "node:fs";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { drawn_plots, launch, next_drawing, open_live, point_on, temporary_folder } from "./browser.js";
import { correct_checksums, keep_frames, run_rtrange } from "./captures.js";
import { start_live, start_live_at } from "./live_server.js";
import { decode_tables, key_figures_of } from "./tables.js";

const folder = temporary_folder();
const capture = join(folder, "run.pcap");
const screenshots = process.env.SCREENSHOTS;
const units = ["hunter", "target1", "target2", "target3"];
let browser;
let tables;

before(async () => {
  mkdirSync(screenshots, { recursive: true });
  run_rtrange("simulate", capture, "--duration", "60", "--targets", "3");
  tables = decode_tables(capture, units);
  browser = await launch();
});

after(() => browser?.close());

/** Serves a capture for what `look` does with the live page, which may cause no error and no other request. */
async function with_live(file, options, look, view = {}) {
  const server = await start_live(file, ...options);
  try {
    const page = await open_live(browser, server.url, view);
    await look(page, server);
    assert.deepEqual(page.faults, []);
    await page.close();
  } finally {
    await server.kill();
  }
}

/** Waits for a time of the run. */
function reached(page, seconds) {
  return page.waitForFunction((time) => watch.status?.now >= time, seconds);
}

const warnings = (page) => page.locator("#warnings").innerText();

test("draws all figures and plots at both sizes, in light and dark, without scrolling", () =>
  with_live(capture, ["--speed", "1"], async (first, { url }) => {
    await reached(first, 14);
    for (const [width, height] of [
      [1024, 768],
      [1920, 1080],
    ])
      for (const scheme of ["light", "dark"]) {
        const page = await open_live(browser, url, { width, height, scheme });
        await page.waitForFunction(() => watch.view.figures.every(({ card }) => !/–\n/.test(card.innerText.split("Collision")[0])));
        await next_drawing(page);
        const below = await page.evaluate(() =>
          ["#figures", 'figure[data-plot="Map"]', 'figure[data-plot="Longitudinal range"]', 'figure[data-plot^="Time to"]']
            .map((selector) => document.querySelector(selector).getBoundingClientRect())
            .filter(({ bottom, right }) => bottom > innerHeight || right > innerWidth).length,
        );
        assert.equal(below, 0, `${width} × ${height}: all in view`);
        const small = await page.evaluate(() =>
          [...document.querySelectorAll("header button, .follow, .heading button, button.figure")]
            .map((button) => button.getBoundingClientRect())
            .filter((box) => box.height < 44 || box.width < 44).length,
        );
        assert.equal(small, 0, "buttons for fingers");
        const cut = await page.evaluate(() =>
          [...document.querySelectorAll(".value div, .unit h2")].filter((line) => line.scrollWidth > line.clientWidth).length,
        );
        assert.equal(cut, 0, "no figure is cut");
        assert.equal(await warnings(page), "");
        await page.screenshot({ path: join(screenshots, `watch-${width}x${height}-${scheme}.png`) });
        await page.setViewportSize({ width, height: 3000 });
        await next_drawing(page);
        const plots = await drawn_plots(page);
        assert.equal(plots.length, 11);
        for (const { title, pixels } of plots)
          assert.ok(Math.max(...Object.values(pixels)) > 40, `${title}: ${JSON.stringify(pixels)}`);
        assert.deepEqual(page.faults, []);
        await page.close();
      }
  }));

test("cuts no figure of four targets that are far away", async () => {
  const far = join(folder, "oncoming.pcap");
  run_rtrange("simulate", far, "--scenario", "oncoming", "--duration", "45", "--targets", "4");
  await with_live(far, ["--speed", "0"], async (page) => {
    await page.waitForFunction(() => watch.status.state === "ended");
    const cut = () =>
      page.evaluate(() =>
        [...document.querySelectorAll(".value div, .value b, .value small, .source, .unit h2, #clock, #state, header")]
          .filter((box) => box.scrollWidth > box.clientWidth && getComputedStyle(box).display !== "inline")
          .map((box) => `${box.closest("article")?.dataset.unit} ${box.innerText}`),
      );
    for (const [width, height] of [
      [1024, 768],
      [768, 1024],
    ]) {
      await page.setViewportSize({ width, height });
      await next_drawing(page);
      assert.deepEqual(await cut(), [], `${width} × ${height}`);
      await page.screenshot({ path: join(screenshots, `watch-oncoming-${width}x${height}.png`) });
      const sizes = await page.evaluate(() =>
        [...document.querySelectorAll(".value b")].map((number) => parseFloat(getComputedStyle(number).fontSize)),
      );
      assert.ok(Math.min(...sizes) >= 13, `${sizes}`);
      assert.equal(await page.locator("#figures, #clock").evaluateAll((boxes) => boxes.filter((box) => box.getBoundingClientRect().right > innerWidth).length), 0);
    }
    const shown = await figures_of(page);
    const { range_longitudinal, range_lateral, range_rate_longitudinal } = shown.find(({ unit, kind }) => unit === "target1" && kind === "range").values;
    assert.match(range_longitudinal, /^−\d{4}$/);
    assert.match(range_lateral, /^−\d{3}\.\d$/);
    assert.match(range_rate_longitudinal, /^−\d\d\.\d\d$/);
  }, { width: 1024, height: 768 });
});

/** The figures shown: of each unit and kind of rows the time, and the texts by column. */
function figures_of(page) {
  return page.evaluate(() =>
    [...document.querySelectorAll(".unit .group")].map((group) => ({
      unit: group.closest(".unit").dataset.unit,
      kind: group.dataset.kind,
      source: group.querySelector(".source").textContent,
      values: Object.fromEntries(
        [...group.querySelectorAll(".value")].map((value) => [value.dataset.column, value.querySelector("b").textContent]),
      ),
    })),
  );
}

/** Compares the figures with the rows of the tables that have their times. Returns the times. */
async function assert_rows(page) {
  const figures = await figures_of(page);
  assert.equal(figures.length, 7); // NCOM of four units, ranges of three
  return figures.map(({ unit, kind, source, values }) => {
    const [, text] = source.match(/row at ([\d.]+) s$/);
    assert.ok(text.split(".")[1].length >= 6, source);
    const row = tables[unit].find(
      ({ time_s, packet }) => Number(time_s) === Number(text) && (packet === "range") === (kind === "range"),
    );
    assert.ok(row, `a row of ${unit} at ${text} s`);
    for (const [column, shown] of Object.entries(values)) {
      const words = `${unit}, ${column} at ${text} s: ${shown}, ${row[column]}`;
      if (column === "navigation_status") assert.equal(shown, { 3: "locking", 4: "locked" }[row[column]], words);
      else if (shown === "–") assert.equal(row[column], "", words);
      else {
        const decimals = shown.match(/\.(\d+)°?$/)?.[1].length ?? 0;
        assert.ok(decimals > 0 || Math.abs(row[column]) > 999, words);
        const difference = parseFloat(shown.replace("−", "-")) - Number(row[column]);
        assert.ok(row[column] !== "" && Math.abs(difference) <= 0.5000001 * 10 ** -decimals, words);
      }
    }
    return Number(text);
  });
}

/** Compares the figures, and the legend of a plot, with the rows that are nearest to the cursor. */
async function assert_nearest_rows(page) {
  const cursor = await page.evaluate(() => watch.axis.cursor);
  const times = await assert_rows(page);
  const figures = await figures_of(page);
  figures.forEach(({ unit, kind }, i) => {
    const rows = tables[unit].filter(({ packet }) => (packet === "range") === (kind === "range"));
    const least = Math.min(...rows.map(({ time_s }) => Math.abs(time_s - cursor)));
    assert.ok(Math.abs(Math.abs(times[i] - cursor) - least) < 1e-8, `${unit} ${kind}: ${times[i]}, ${cursor}`);
  });
  const legend = await page.locator('figure[data-plot="Longitudinal range"] .u-value').allInnerTexts();
  const ranges = figures.filter(({ kind }) => kind === "range").map(({ values }) => values.range_longitudinal);
  const number = (text) => Number(text.replace("−", "-"));
  const is_same = (text, i) => Math.abs(number(text) - number(ranges[i])) < 0.0101; // halves are rounded differently
  assert.ok(legend.slice(-3).every(is_same), `${legend}, ${ranges}`);
}

test("shows at a paused moment the values of single rows of the tables", () =>
  with_live(capture, ["--speed", "3"], async (page) => {
    await reached(page, 13);
    await page.click("#pause");
    const times = await assert_rows(page);
    const before_wait = await page.evaluate(() => [watch.axis.to, watch.view.plots[0].scales.x.max, watch.streams.get("hunter navigation").rows]);
    for (const time of times) assert.ok(time <= before_wait[0] && time > before_wait[0] - 0.5, `${time}, ${before_wait}`);
    const texts = await page.locator("#figures").innerText();
    await reached(page, before_wait[0] + 3);
    assert.equal(await page.locator("#figures").innerText(), texts, "frozen");
    const after_wait = await page.evaluate(() => [watch.axis.to, watch.view.plots[0].scales.x.max, watch.streams.get("hunter navigation").rows]);
    assert.deepEqual(after_wait.slice(0, 2), before_wait.slice(0, 2));
    assert.ok(after_wait[2] > before_wait[2] + 100, "rows are still collected");
    assert.equal(await page.locator("#state").innerText(), "Paused");

    // At the cursor, in all plots and on the map.
    await page.mouse.move(...(await point_on(page, "Longitudinal range", 0.9, 0.5)));
    await next_drawing(page);
    const cursor = await page.evaluate(() => watch.axis.cursor);
    assert.ok(cursor < before_wait[0] - 1);
    await assert_nearest_rows(page);
    assert.equal(await page.locator(".marker:visible").count(), 4);
    await page.mouse.move(2, 2);
    for (const time of [10.002, 10.008]) {
      await page.evaluate((at) => watch.axis.point_to(at), time);
      await next_drawing(page);
      await assert_nearest_rows(page);
    }

    await page.click("#pause");
    await page.waitForFunction((time) => watch.axis.to > time + 3, before_wait[0]);
    assert.equal(await page.locator("#state").innerText(), "Running");
    assert.match((await figures_of(page))[0].source, /^NCOM: \d+\/s · \d+\.\d\d s$|ago$/);
  }));

test("computes the key figures of the time in view as the tables have them", () =>
  with_live(capture, ["--speed", "0"], async (page) => {
    await page.waitForFunction(() => watch.status.state === "ended");
    assert.equal(await warnings(page).then((text) => text.trim()), "End of the capture");
    for (const { source } of await figures_of(page)) assert.match(source, /^(NCOM|Ranges): last at 59\.9\d\d s$/);
    await page.click("#windows button:nth-child(3)");
    const names = { Hunter: "hunter", "Target 1": "target1", "Target 2": "target2", "Target 3": "target3" };
    for (const [from, to] of [
      [-1, 60],
      [11.9995, 16.0005],
    ]) {
      if (from > 0) await page.evaluate((view) => watch.axis.show(...view), [from, to]);
      await next_drawing(page);
      const text = await page.evaluate(() => watch.view.key_figures.text());
      const rows = text.replace(/\n$/, "").split("\n").slice(1).map((line) => line.split("\t"));
      assert.equal(rows.length, 3 * 4 + 4 * 5);
      for (const [unit, name, value, , time] of rows) {
        const expected = key_figures_of(tables[names[unit]], from, to)[name];
        const words = `${unit}, ${name} from ${from} to ${to}: ${value} at ${time}`;
        if (!expected) assert.equal(value, "", words);
        else {
          assert.ok(Math.abs(Number(value) - expected.value) <= 1e-12 * Math.abs(expected.value), words);
          assert.equal(Number(time), expected.time, words);
        }
      }
      // A click moves the cursor to the moment, and the figures to its row, for the view is paused now.
      if (from < 0) continue;
      await page.locator("#key_figures button.figure").first().click();
      await page.mouse.move(2, 2);
      await next_drawing(page);
      assert.equal(await page.evaluate(() => Number(exact_seconds(watch.axis.cursor))), Number(rows[0][4]));
      assert.ok((await assert_rows(page)).includes(Number(rows[0][4])));
    }
  }));

test("draws all plots at the end and before printing, with several labels and no time before the run", () =>
  with_live(
    capture,
    ["--speed", "20"],
    async (page) => {
      const last_drawn = () =>
        page.evaluate(() => watch.view.plots.map((u) => [u.scales.x.min, u.scales.x.max].map((time) => time.toFixed(6)).join()));
      await page.waitForFunction(() => watch.status.state === "ended");
      assert.equal(new Set(await last_drawn()).size, 1);
      await page.evaluate(() => watch.axis.show(20, 30));
      await next_drawing(page);
      assert.ok(new Set(await last_drawn()).size > 1, "plots out of view are not drawn");
      await page.evaluate(() => dispatchEvent(new Event("beforeprint")));
      assert.equal(new Set(await last_drawn()).size, 1);
      await page.evaluate(() => Object.assign(watch.axis, { from: -22, to: 8 }).redraw());
      await next_drawing(page);
      const labels = await page.evaluate(() => {
        const [plot] = watch.view.plots;
        return plot.axes.map(({ _values }) => _values);
      });
      assert.deepEqual(labels[0].filter((label) => label !== ""), ["0 s", "5 s"]);
      assert.ok(labels[1].length >= 2, `${labels[1]}`);
      const cut = await page.locator("figcaption").evaluateAll((boxes) => boxes.filter((box) => box.scrollWidth > box.clientWidth).length);
      assert.equal(cut, 0);
    },
    { width: 1024, height: 768 },
  ));

test("lets the viewer choose the window, zoom, pan and follow", () =>
  with_live(capture, ["--speed", "3"], async (page) => {
    await reached(page, 8);
    const view = () => page.evaluate(() => [watch.axis.from, watch.axis.to, watch.is_paused]);
    for (const [i, seconds] of [30, 60, 120, 300, 600].entries()) {
      await page.click(`#windows button:nth-child(${i + 1})`);
      const [from, to] = await view();
      assert.ok(Math.abs(to - from - seconds) < 1e-6);
    }
    await page.click("#windows button:nth-child(1)");
    await page.mouse.move(...(await point_on(page, "Longitudinal range", 0.9, 0.5)));
    await page.mouse.wheel(0, -200);
    await next_drawing(page);
    const [from, to, is_paused] = await view();
    assert.ok(is_paused && to - from < 25, `${to - from} s after a turn of the wheel`);
    await page.click("#pause");
    await page.waitForFunction((time) => watch.axis.to > time, to + 0.5);
    const resumed = await view();
    assert.ok(Math.abs(resumed[1] - resumed[0] - 30) < 1e-6);

    const follow = page.locator(".follow");
    await follow.click();
    const north = await page.evaluate(() => watch.view.map.north);
    await page.waitForFunction((time) => watch.axis.to > time, (await view())[1] + 1);
    assert.equal(await page.evaluate(() => watch.view.map.north), north);
    await follow.click();
    await page.waitForFunction((place) => watch.view.map.north > place, north);
  }));

test("understands fingers", () =>
  with_live(
    capture,
    ["--speed", "3"],
    async (page) => {
      await reached(page, 10);
      const devtools = await page.context().newCDPSession(page);
      const touch = (type, ...points) =>
        devtools.send("Input.dispatchTouchEvent", { type, touchPoints: points.map(([x, y], id) => ({ x, y, id })) });
      const [x, y] = await point_on(page, "Longitudinal range", 0.6, 0.5);
      await page.touchscreen.tap(x, y);
      await next_drawing(page);
      assert.ok(await page.evaluate(() => watch.axis.cursor !== null), "a tap sets the cursor");

      await page.click("#pause");
      const view = () => page.evaluate(() => [watch.axis.from, watch.axis.to]);
      const [from, to] = await view();
      await touch("touchStart", [x, y]);
      for (let i = 1; i <= 6; ++i) await touch("touchMove", [x + 20 * i, y]);
      await touch("touchEnd");
      await next_drawing(page);
      const panned = await view();
      assert.ok(panned[1] < to - 2 && Math.abs(panned[1] - panned[0] - (to - from)) < 1e-6, `${panned} after ${from}, ${to}`);

      await touch("touchStart", [x - 20, y], [x + 20, y]);
      for (let i = 1; i <= 6; ++i) await touch("touchMove", [x - 20 - 10 * i, y], [x + 20 + 10 * i, y]);
      await touch("touchEnd");
      await next_drawing(page);
      const zoomed = await view();
      assert.ok(zoomed[1] - zoomed[0] < 0.7 * (to - from), `${zoomed} after ${panned}`);
    },
    { width: 1024, height: 768, hasTouch: true },
  ));

/** The last byte of the address of the unit that a frame is NCOM from, wrapped or not. */
function ncom_sender(frame) {
  const port = frame.length > 42 ? frame.readUInt16BE(36) : 0;
  if (port === 3000) return frame[29];
  const [payload, wrapped_ncom] = [42, 134];
  return port === 3003 && frame.length === wrapped_ncom ? frame.subarray(payload + 4, payload + 8)[3] : null;
}

/** The number of the target that a frame is a range packet about. */
function target_of(frame) {
  const [payload, range_packet] = [42, 107];
  return frame.length === range_packet && frame.readUInt16BE(36) === 3003 ? frame[payload + 6] : null;
}

test("warns of units that have become silent, and of bad data", async () => {
  const silent = join(folder, "silent.pcap");
  keep_frames(capture, silent, (time, frame) => {
    if (time < 4) return true;
    if (ncom_sender(frame) === 21 && frame.length === 114) {
      const ncom = frame.subarray(42);
      ncom[21] = 3; // locking
      correct_checksums(ncom);
    }
    return time < 12 && ncom_sender(frame) !== 22 && target_of(frame) !== 3;
  });
  await with_live(silent, ["--speed", "1"], async (page) => {
    await page.waitForFunction(() => document.querySelectorAll(".warning").length === 2);
    const text = await warnings(page);
    for (const what of [/No NCOM from target 2 for (\d\.\d) s/, /No range packets about target 3 for (\d\.\d) s/]) {
      const [, seconds] = text.match(what);
      const silence = await page.evaluate(() => watch.status.now - 4);
      assert.ok(seconds >= 1 && seconds <= silence + 0.1, `${seconds} s of ${silence} s`);
    }
    const figures = await page.locator('.unit[data-unit="target2"] .group.old').count();
    assert.equal(figures, 1, "old figures look old");
    const status = '.unit[data-unit="target1"] [data-column="navigation_status"]';
    await page.waitForFunction((selector) => /bad\s+locking/.test(document.querySelector(selector)?.innerText), status);
    assert.equal(await page.locator('.unit[data-unit="target3"] .is_bad').count(), 0);
    await page.screenshot({ path: join(screenshots, "watch-warnings.png") });
    await page.waitForFunction(() => watch.status.state === "ended", undefined, { timeout: 60_000 });
    await page.waitForFunction(() => document.getElementById("warnings").innerText.trim() === "End of the capture");
    assert.equal(await page.locator("#state").innerText(), "Ended");
  }, { width: 1024, height: 768 });
});

test("has one warning if nothing is received, which ends with the silence", async () => {
  const silent = join(folder, "gap.pcap");
  keep_frames(capture, silent, (time) => time < 30 || time > 55);
  await with_live(silent, ["--speed", "20"], async (page) => {
    const texts = await page.evaluate(
      () =>
        new Promise((done) => {
          const seen = [];
          const look = () => {
            const times = watch.status.senders.map(({ last }) => last);
            seen.push([watch.status.now - Math.max(...times), document.getElementById("warnings").innerText.trim()]);
            if (watch.status.state === "ended") done(seen);
          };
          const update = watch.connection.on_update;
          watch.connection.on_update = (data) => {
            update(data);
            look();
          };
        }),
    );
    const warned = texts.filter(([silence]) => silence > 1);
    assert.ok(warned.length > 3 && texts.at(-2)[0] < 1, JSON.stringify(texts));
    for (const [silence, text] of texts.slice(0, -1))
      assert.equal(text, silence > 1 ? `Nothing received for ${silence.toFixed(1)} s` : "");
  });
});

test("says when too many browsers watch, and connects when one leaves", async () => {
  const server = await start_live(capture, "--speed", "1");
  const requests = Array.from({ length: 32 }, () => new AbortController());
  try {
    for (const { signal } of requests) await fetch(`${server.url}events`, { signal });
    const page = await browser.newPage();
    await page.goto(server.url);
    await page.waitForFunction(() => document.getElementById("warnings").innerText.includes("32 browsers are watching already; trying again"));
    for (const request of requests) request.abort();
    await page.waitForFunction(() => watch.status?.state === "running" && document.getElementById("warnings").innerText === "");
    await page.close();
  } finally {
    await server.kill();
  }
});

test("says when the connection is lost, and connects again", async () => {
  const first = await start_live(capture, "--speed", "3");
  const page = await open_live(browser, first.url);
  await reached(page, 6);
  await first.kill("SIGKILL");
  await page.waitForFunction(() => /Connection lost; trying again/.test(document.getElementById("warnings").innerText));
  const rows = await page.evaluate(() => watch.streams.get("hunter navigation").rows);

  // Figures without a connection are old: none has a colour of live ones or a rate, and their ages go on.
  const ages = async () => {
    const sources = await page.locator(".source").allInnerTexts();
    return sources.map((text) => Number(text.match(/^(?:NCOM|Ranges): (\d+\.\d\d) s ago$/)[1]));
  };
  await page.waitForFunction(() => document.querySelector("#figures.old"));
  const colours = () =>
    page.evaluate(() => [...new Set([...document.querySelectorAll(".value b")].map((number) => getComputedStyle(number).color))]);
  const lost_colours = await colours();
  assert.equal(lost_colours.length, 1);
  const [early] = await ages();
  await page.waitForTimeout(1000);
  const [late] = await ages();
  assert.ok(late > early + 0.5 && late < early + 2, `${early} s, then ${late} s`);
  await page.screenshot({ path: join(screenshots, "watch-lost.png") });

  const second = await start_live_at(first.port, capture, "--speed", "1");
  try {
    await page.waitForFunction(() => document.getElementById("warnings").innerText === "");
    await page.waitForFunction(() => watch.status?.now > 0.5);
    assert.notDeepEqual(await colours(), lost_colours);
    assert.match((await page.locator(".source").allInnerTexts()).join(), /\d+\/s · /);
    const now = await page.evaluate(() => [watch.status.now, watch.streams.get("hunter navigation").rows]);
    assert.ok(now[0] < 6 && now[1] < rows, `rows of the earlier run are forgotten: ${now}, ${rows}`);
    // The browser itself reports the connections that failed.
    assert.deepEqual(page.faults.filter((fault) => !/ERR_CONNECTION_REFUSED|ERR_INCOMPLETE_CHUNKED|ERR_CONNECTION_RESET|ERR_EMPTY/.test(fault)), []);
    await page.close();
  } finally {
    await second.kill();
  }
});

test("keeps rows, view and pause when it connects to the same run again", () =>
  with_live(capture, ["--speed", "1"], async (page) => {
    await reached(page, 3);
    await page.click("#pause");
    const view = () => page.evaluate(() => [watch.is_paused, watch.axis.from, watch.axis.to]);
    const times = () => page.evaluate(() => [...watch.streams.get("hunter navigation").values.time]);
    const [view_before, times_before] = [await view(), await times()];
    await page.evaluate(() => watch.connection.connect());
    await page.waitForFunction(
      (time) => watch.streams.get("hunter navigation").values.time.at(-1) > time,
      times_before.at(-1) + 0.5,
    );
    assert.deepEqual(await view(), view_before);
    const all = await times();
    assert.deepEqual(all.slice(0, times_before.length), times_before);
    assert.ok(all.every((time, i) => i === 0 || time > all[i - 1]));
  }));

test("keeps ten minutes of rows, and traces that are as if made at once", () =>
  with_live(capture, ["--speed", "0"], async (page) => {
    const result = await page.evaluate(() => {
      const stream = new LiveStream({ unit: "hunter", kind: "navigation", columns: ["time", "heading", "north"] });
      const trace = stream.trace("heading", true);
      let [time, most] = [0, 0];
      const differences = [];
      for (let i = 0; i < 10_000; ++i) {
        const times = Array.from({ length: 13 }, () => (time += 0.01));
        if (i % 1000 === 500) time += 1;
        stream.append([times, times.map((now) => (Math.floor(now) % 97 === 5 ? null : (now * 7) % 360)), times.map(() => 1)]);
        stream.forget_before(time - length_s);
        most = Math.max(most, stream.capacity);
        if (i % 2500 !== 2499) continue;
        const { values } = stream;
        const fresh = make_trace("hunter", "", values.time, values.heading, true);
        for (const part of ["breaks", "summary", "times", "values"])
          if (JSON.stringify(fresh[part]) !== JSON.stringify(trace[part])) differences.push(`${part} after ${i}`);
      }
      return { differences, most, rows: stream.rows, span: time - stream.values.time[0], breaks: trace.breaks.length };
    });
    assert.deepEqual(result.differences, []);
    assert.ok(result.breaks > 10 && result.most < 90_000, JSON.stringify(result));
    assert.ok(result.span >= 600 && result.span < 680, JSON.stringify(result));
  }));

test("plots named fields, too", () =>
  with_live(capture, ["--speed", "0", "--fields", "altitude,lane_d5"], async (page) => {
    await page.waitForFunction(() => watch.status.state === "ended" && watch.view.plots.length === 12);
    await page.setViewportSize({ width: 1920, height: 3500 });
    await page.evaluate(() => watch.axis.redraw());
    await next_drawing(page);
    const plots = await drawn_plots(page);
    const units_of = (title) => {
      const { pixels } = plots.find((plot) => plot.title === title);
      return Object.keys(pixels).filter((unit) => pixels[unit] > 0);
    };
    assert.deepEqual([units_of("lane_d5"), units_of("altitude").length > 0], [["rcom"], true]);
    assert.equal(await page.locator(".unit").count(), 4);
  }));

test("waits for the first frame", () =>
  with_live(capture, ["--speed", "0"], async (page) => {
    await page.evaluate(() => {
      watch.connection.source.close();
      watch.start(watch.data);
      watch.update({ now: null, zero_ms: null, state: "waiting", notes: [], units: [], senders: [], epoch: 0, streams: [] });
      watch.show_state();
    });
    assert.equal((await warnings(page)).trim(), "Waiting for the first frame");
    assert.equal(await page.locator("#state").innerText(), "Waiting");
  }));

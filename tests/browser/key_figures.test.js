// The card with the key figures in a report.

import assert from "node:assert/strict";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { launch, next_drawing, open_report, temporary_folder } from "./browser.js";
import { point_on } from "./browser.js";
import { run_rtrange } from "./captures.js";
import { decode_tables, key_figures_of } from "./tables.js";

const folder = temporary_folder();
const capture = join(folder, "run.pcap");
const units = { Hunter: "hunter", "Target 1": "target1", "Target 2": "target2" };
let browser;
let page;
let tables;

before(async () => {
  run_rtrange("simulate", capture, "--duration", "40", "--targets", "2", "--seed", "7");
  run_rtrange("report", capture, "--output", join(folder, "run.html"));
  tables = decode_tables(capture, Object.values(units));
  browser = await launch();
  page = await open_report(browser, join(folder, "run.html"));
});

after(() => browser?.close());

const card = 'article[data-card="Key figures"]';

/** Waits until the card shows the figures of the time in view. */
function updated(shown) {
  return shown.waitForFunction(() => report.key_figures.timer === undefined);
}

/** The figures in the card's table with tabs. */
async function figures_in(shown) {
  const text = await shown.evaluate(() => report.key_figures.text());
  const [head, ...rows] = text.replace(/\n$/, "").split("\n").map((line) => line.split("\t"));
  assert.deepEqual(head, ["Unit", "Key figure", "Value", "Unit of value", "Time (s)"]);
  return rows;
}

/** Compares the card with the tables, and its texts with its table. Returns how many figures it has. */
async function assert_figures(shown, from, to) {
  await updated(shown);
  const rows = await figures_in(shown);
  const shown_texts = await shown.locator(`${card} button.figure`).allInnerTexts();
  assert.equal(shown_texts.length, rows.length);
  for (const [i, [unit, name, value, unit_of_value, time]] of rows.entries()) {
    assert.match(unit_of_value, /^(m|s|m\/s|m\/s²|km\/h|°\/s)$/);
    const expected = key_figures_of(tables[units[unit]], from, to)[name];
    const words = `${unit}, ${name} from ${from} to ${to}`;
    if (!expected) {
      const unknown = name === "Smallest time to collision" ? "never approached" : "–";
      assert.deepEqual([value, time, shown_texts[i].trim()], ["", "", unknown], words);
      continue;
    }
    const precision = 1e-7 * Math.max(Math.abs(expected.value), 0.01); // of columns with 32 bits
    assert.ok(Math.abs(Number(value) - expected.value) <= precision, `${words}: ${value}, ${expected.value}`);
    assert.equal(Number(time), expected.time, words);
    const [, shown_value, decimals, moment] = shown_texts[i].match(/^(−?\d+\.(\d+)) at (\d+\.\d{3} s)$/);
    assert.deepEqual([decimals.length, moment], [expected.decimals, `${expected.time.toFixed(3)} s`], words);
    const half = 0.5 * 10 ** -expected.decimals;
    assert.ok(Math.abs(Number(shown_value.replace("−", "-")) - expected.value) <= half + 1e-6, `${words}: ${shown_value}`);
  }
  return rows.filter(([, , value]) => value !== "").length;
}

test("equal those of the tables, for the whole run and for any part of it", async () => {
  assert.equal(await assert_figures(page, -Infinity, Infinity), 2 * 4 + 3 * 5);
  for (const [from, to] of [
    [12.0005, 15.0005],
    [0, 0.004],
    [33.333, 38],
  ]) {
    await page.evaluate((view) => report.axis.show(...view), [from, to]);
    const view = await page.evaluate(() => [report.axis.from, report.axis.to]);
    assert.ok((await assert_figures(page, ...view)) > 0);
  }
});

test("follow a manoeuvre that is selected in a plot", async () => {
  await page.click("#reset");
  await page.locator('figure[data-plot="Heading"]').scrollIntoViewIfNeeded();
  await page.mouse.move(...(await point_on(page, "Heading", 0.3, 0.5)));
  await page.mouse.down();
  await page.mouse.move(...(await point_on(page, "Heading", 0.5, 0.5)), { steps: 4 });
  await page.mouse.up();
  await page.mouse.move(2, 2);
  await next_drawing(page);
  const [from, to] = await page.evaluate(() => [report.axis.from, report.axis.to]);
  assert.ok(from > 10 && to < 22 && to - from > 6, `${from} to ${to}`);
  assert.equal(await assert_figures(page, from, to), 23);
  assert.match(await page.locator(`${card} .range`).innerText(), new RegExp(`^${from.toFixed(3)} s to`));
});

test("move the time cursor to their moments, with the mouse and with the keyboard", async () => {
  await page.click("#reset");
  await updated(page);
  const rows = await figures_in(page);
  const buttons = page.locator(`${card} button.figure`);
  for (const [i, press] of [
    [1, (button) => button.click()],
    [10, (button) => button.press("Enter")],
  ]) {
    await press(buttons.nth(i));
    await page.mouse.move(2, 2);
    await next_drawing(page);
    const time = Number(rows[i][4]);
    assert.ok((await page.locator("#readout").innerText()).startsWith(`${time.toFixed(3)} s`));
    assert.equal(await page.locator(".marker:visible").count(), 3);
    const cursors = await page.evaluate(() => report.plots.map((u) => u.posToVal(u.cursor.left, "x")));
    for (const at of cursors) assert.ok(Math.abs(at - time) < 0.02, `${at} instead of ${time}`);
  }
  // The legends show the rows of the figure itself, and the cursor stays there when the view changes.
  await buttons.nth(1).click();
  await page.evaluate((time) => report.axis.show(time - 3, time + 1), Number(rows[1][4]));
  await next_drawing(page);
  const legend = page.locator('figure[data-plot^="Time to collision"] .u-value');
  assert.equal(await legend.nth(1).innerText(), Number(rows[1][2]).toFixed(2));
  const [cursor, at] = await page.evaluate(() => {
    const [u] = report.plots;
    return [report.axis.cursor, u.posToVal(u.cursor.left, "x")];
  });
  assert.ok(Math.abs(cursor - Number(rows[1][4])) < 1e-9 && Math.abs(at - cursor) < 0.01, `${cursor}, ${at}`);
});

test("are copied as a table, with and without the browser's clipboard", async () => {
  await page.click("#reset");
  const expected = await page.evaluate(() => report.key_figures.text());
  const button = page.locator(`${card} .heading button`);
  /** The text that a paste inserts. */
  const pasted = async () => {
    await page.evaluate(() => document.body.append(element("textarea", { id: "target" })));
    await page.focus("#target");
    await page.keyboard.press("Control+V");
    const text = await page.inputValue("#target");
    await page.evaluate(() => document.getElementById("target").remove());
    return text;
  };
  for (const deny of [false, true]) {
    await page.evaluate((without) => {
      const write = async (text) => (window.written = text);
      const refuse = () => Promise.reject(new Error("denied"));
      Object.defineProperty(navigator, "clipboard", { value: { writeText: without ? refuse : write }, configurable: true });
    }, deny);
    await button.click();
    await page.waitForFunction(() => document.querySelector(".heading button").textContent === "Copied");
    assert.equal(deny ? await pasted() : await page.evaluate(() => window.written), expected);
    await page.waitForFunction(() => document.querySelector(".heading button").textContent === "Copy");
  }
  assert.equal(expected.split("\n").length, 1 + 23 + 1);
});

test("are only those whose columns the page has", async () => {
  const titles = async (...options) => {
    const file = join(folder, "other.html");
    run_rtrange("report", capture, "--output", file, "--overwrite", ...options);
    const shown = await open_report(browser, file);
    const found = (await shown.locator(card).count()) > 0 ? await figures_in(shown) : [];
    assert.deepEqual(shown.faults, []);
    await shown.close();
    return [...new Set(found.map(([, name]) => name))];
  };
  assert.deepEqual(await titles("--fields", "range_longitudinal,range_rate_longitudinal,rate_z"), [
    "Smallest longitudinal range",
    "Largest closing speed",
    "Largest yaw rate",
  ]);
  assert.deepEqual(await titles("--fields", "altitude"), []);
  assert.deepEqual(await titles("--view", "record"), []);
});

test("have caused no error and no request", () => assert.deepEqual(page.faults, []));

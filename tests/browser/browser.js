// Chromium, and a page of it that tells of everything that goes wrong.

import { mkdtempSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { chromium } from "playwright-core";

const options = [
  "--headless",
  "--no-sandbox",
  "--disable-gpu",
  "--disable-quic",
  "--no-first-run",
  "--disable-background-networking",
  "--disable-component-update",
  "--disable-sync",
];

/** A folder that is gone when the tests are over. */
export function temporary_folder() {
  const folder = mkdtempSync(join(tmpdir(), "rtrange_browser_test_"));
  process.on("exit", () => rmSync(folder, { recursive: true, force: true }));
  return folder;
}

export function launch() {
  return chromium.launch({ executablePath: "/usr/bin/chromium", args: options });
}

/** A page. `faults` collects errors, and requests that `is_own` does not accept. */
async function new_page(browser, { width = 1920, height = 1080, scheme = "light", ...options }, is_own) {
  const page = await browser.newPage({ viewport: { width, height }, colorScheme: scheme, ...options });
  page.faults = [];
  page.on(
    "console",
    (message) =>
      ["error", "warning"].includes(message.type()) && page.faults.push(`console: ${message.text()}`),
  );
  page.on("pageerror", (error) => page.faults.push(`page: ${error.stack}`));
  page.on(
    "request",
    (request) =>
      !is_own(request.url()) &&
      !request.url().startsWith("data:") &&
      page.faults.push(`request: ${request.url()}`),
  );
  await page.addInitScript(() => {
    // A copy: reading pixels of the page's own canvas would slow down its drawing.
    window.pixels_of = (canvas, left = 0, top = 0, width = canvas.width, height = canvas.height) => {
      const context = new OffscreenCanvas(width, height).getContext("2d", { willReadFrequently: true });
      context.drawImage(canvas, -left, -top);
      return context.getImageData(0, 0, width, height).data;
    };
  });
  return page;
}

/** Opens a report and waits until it has drawn. */
export async function open_report(browser, file, view = {}) {
  const url = `file://${file}`;
  const page = await new_page(browser, view, (requested) => requested === url);
  await page.goto(url);
  await page.waitForFunction(() => window.report);
  await next_drawing(page);
  return page;
}

/** Opens a live page and waits until it has drawn. */
export async function open_live(browser, url, view = {}) {
  const page = await new_page(browser, view, (requested) => [url, `${url}events`].includes(requested));
  await page.goto(url);
  await page.waitForFunction(() => watch.view?.plots.length >= 10);
  await next_drawing(page);
  return page;
}

/** Waits until the screen shows what the last event has changed. */
export function next_drawing(page) {
  return page.evaluate(
    () =>
      new Promise((done) =>
        requestAnimationFrame(() => requestAnimationFrame(() => requestAnimationFrame(done))),
      ),
  );
}

/** The plots of a page: title, and the pixels inside of the axes that have each trace's colour. */
export function drawn_plots(page) {
  return page.evaluate(() => {
    const { plots, map } = window.report ?? watch.view;
    const all = [...plots, map?.u];
    const count = (figure, colour) => {
      const [red, green, blue] = [1, 3, 5].map((at) => parseInt(colour.slice(at, at + 2), 16));
      const { ctx, bbox } = all.find((u) => figure.contains(u?.root));
      const data = pixels_of(ctx.canvas, bbox.left, bbox.top, bbox.width, bbox.height);
      let pixels = 0;
      for (let i = 0; i < data.length; i += 4)
        if (data[i] === red && data[i + 1] === green && data[i + 2] === blue) ++pixels;
      return pixels;
    };
    return [...document.querySelectorAll("figure")].map((figure) => {
      const units = [...figure.querySelectorAll(".u-marker[data-unit]")].map((marker) => marker.dataset.unit);
      return {
        title: figure.dataset.plot,
        pixels: Object.fromEntries(units.map((unit) => [unit, count(figure, unit_colour(unit))])),
      };
    });
  });
}

/** The ranges of time that the plots show. */
export function ranges(page) {
  return page.evaluate(() => report.plots.map(({ scales: { x } }) => [x.min, x.max]));
}

/** A point on a plot, by the parts of its width and height. */
export async function point_on(page, title, across, down) {
  const box = await page.locator(`figure[data-plot="${title}"] .u-over`).boundingBox();
  return [box.x + across * box.width, box.y + down * box.height];
}

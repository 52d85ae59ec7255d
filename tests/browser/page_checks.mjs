// What holds for every page: it loads nothing besides itself, reports no error, is reached by the keyboard, is readable
// without scripts, has no serious finding of axe in light and dark, and fits A4 and Letter.

import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { pathToFileURL } from 'node:url';
import path from 'node:path';

const viewers = process.env.VIEWERS;
const { chromium } = createRequire(path.join(viewers, 'package.json'))('playwright-core');
const axe = readFileSync(path.join(viewers, 'node_modules/axe-core/axe.min.js'), 'utf8');

let failures = 0;

// Reports a broken promise and goes on, so that one run shows all of them.
export function expect(holds, what) {
  if (holds) return;
  failures += 1;
  if (failures <= 40) console.error(`FAILED: ${what}`);
}

export function finish() {
  if (failures > 0) {
    console.error(`${failures} checks failed`);
    process.exit(1);
  }
}

export async function launch() {
  return chromium.launch({ executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium', args: ['--no-sandbox'] });
}

// Opens a page and watches what it says and asks for.
export async function openPage(browser, file, options = {}) {
  const context = await browser.newContext({ viewport: { width: 1100, height: 900 }, ...options });
  const page = await context.newPage();
  const address = pathToFileURL(file).href;
  const name = path.basename(file);
  page.on('console', (message) => expect(false, `${name}: the console says ${message.text()}`));
  page.on('pageerror', (error) => expect(false, `${name}: ${error}`));
  page.on('request', (request) => {
    const asked = request.url().split('#')[0];
    expect(asked === address, `${name} asks for ${request.url()}`);
  });
  await page.goto(address);
  return page;
}

const openDetails = (page) =>
  page.evaluate(() => document.querySelectorAll('details').forEach((each) => (each.open = true)));

// Screen readers name rows and columns by these.
async function checkTables(page, name) {
  const poor = await page.evaluate(() => [...document.querySelectorAll('table')].filter((table) =>
    !table.caption?.textContent || !table.tHead ||
    [...table.querySelectorAll('th')].some((heading) => !heading.scope) ||
    [...table.tBodies].some((body) => [...body.rows].some((row) => row.cells[0].tagName !== 'TH')))
    .map((table) => table.caption?.textContent ?? table.outerHTML.slice(0, 80)));
  expect(poor.length === 0, `${name}: tables without headings for screen readers: ${poor.slice(0, 3)}`);
}

async function checkKeyboard(page, name) {
  const reachable = 'a[href], summary, [role="region"]';
  const expected = await page.evaluate((selector) => {
    const shown = [...document.querySelectorAll(selector)].filter((each) => each.checkVisibility());
    shown.forEach((each, index) => (each.dataset.place = index));
    return shown.length;
  }, reachable);
  await page.evaluate(() => document.activeElement.blur());
  const reached = new Set();
  for (let press = 0; press < expected + 2; press += 1) {
    await page.keyboard.press('Tab');
    const place = await page.evaluate(() => document.activeElement?.dataset.place);
    if (place !== undefined) reached.add(place);
  }
  expect(reached.size === expected, `${name}: Tab reaches ${reached.size} of ${expected} places`);
  const first = page.locator('summary').first();
  if ((await first.count()) === 0) return;
  await first.focus();
  await page.keyboard.press('Enter');
  const opened = await page.evaluate(() => document.activeElement.parentElement.open === true);
  expect(opened, `${name}: Enter opens what can be opened`);
  await page.keyboard.press('Tab');
  const inside = await page.evaluate(
    () => document.querySelector('summary').parentElement.contains(document.activeElement));
  expect(inside, `${name}: Tab goes into what was opened`);
}

// The colours are all that is different in the dark.
const rules = { light: ['wcag2a', 'wcag2aa', 'best-practice'], dark: ['color-contrast'] };

async function checkAxe(browser, file, colorScheme) {
  const page = await openPage(browser, file, { colorScheme });
  await openDetails(page);
  await page.evaluate(axe);
  const result = await page.evaluate(
    (runOnly) => globalThis.axe.run(document, { runOnly }), rules[colorScheme]);
  for (const violation of result.violations) {
    if (!['serious', 'critical'].includes(violation.impact)) continue;
    const where = violation.nodes[0].html.slice(0, 200);
    expect(false, `${path.basename(file)}, ${colorScheme}: ${violation.id}: ${violation.help}: ${where}`);
  }
  expect(result.passes.some((pass) => pass.id === 'color-contrast'), `${colorScheme}: axe has measured contrasts`);
  await page.context().close();
}

// The printable width in CSS pixels of paper across, with the margins of the style sheet.
const papers = { A4: (297 - 24) / 25.4 * 96, Letter: 11 * 96 - 24 / 25.4 * 96 };

async function checkPaper(browser, file) {
  const page = await openPage(browser, file);
  const closed = {};
  for (const paper of Object.keys(papers)) closed[paper] = await page.pdf({ format: paper });
  for (const [paper, pdf] of Object.entries(closed)) {
    const pages = pdf.toString('latin1').match(/\/Type\s*\/Page\b/g)?.length ?? 0;
    expect(pages >= 1 && pages <= 20, `${path.basename(file)} has ${pages} pages on ${paper}`);
  }
  await openDetails(page);
  await page.emulateMedia({ media: 'print' });
  for (const [paper, width] of Object.entries(papers)) {
    await page.setViewportSize({ width: Math.floor(width), height: 700 });
    const widest = await page.evaluate(() => Math.max(document.documentElement.scrollWidth,
      ...[...document.querySelectorAll('table, svg')].map((each) => each.getBoundingClientRect().right)));
    expect(widest <= width + 1, `${path.basename(file)} is ${widest} wide on ${paper}, which has ${width}`);
  }
  await page.context().close();
}

export async function checkWithoutScripts(browser, file, texts) {
  const page = await openPage(browser, file, { javaScriptEnabled: false });
  const shown = await page.locator('body').innerText();
  for (const text of texts) expect(shown.includes(text), `${path.basename(file)} shows "${text}" without scripts`);
  const first = page.locator('summary').first();
  if (await first.count()) {
    await first.click();
    expect(await page.locator('details[open]').count() === 1, `${path.basename(file)} opens lists without scripts`);
  }
  await page.context().close();
}

// Checks a page on which these texts are to be read.
export async function checkPage(browser, file, texts) {
  const page = await openPage(browser, file);
  expect(await page.locator('script, link, img, iframe').count() === 0, `${path.basename(file)} has only its own text`);
  await checkTables(page, path.basename(file));
  await checkKeyboard(page, path.basename(file));
  await page.context().close();
  await checkWithoutScripts(browser, file, texts);
  for (const colorScheme of ['light', 'dark']) await checkAxe(browser, file, colorScheme);
  await checkPaper(browser, file);
}

// Returns the tables with a name, each with its rows: heading, name and cells with text and exact value.
export async function readTables(page) {
  return page.evaluate(() => [...document.querySelectorAll('table[data-table]')].map((table) => ({
    name: table.dataset.table,
    caption: table.caption.textContent,
    columns: [...table.tHead.rows[0].cells].map((cell) => cell.textContent),
    rows: [...table.tBodies].flatMap((body) => [...body.rows]).map((row) => ({
      name: row.dataset.row,
      heading: row.cells[0].textContent,
      cells: [...row.cells].slice(1).map((cell) => ({
        text: cell.textContent,
        value: cell.dataset.value,
        before: cell.querySelector('del')?.textContent,
      })),
    })),
  })));
}

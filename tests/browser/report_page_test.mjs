// usage: report_page_test.mjs FOLDER
//
// Checks the pages of krnqb import --report and krnqb reconcile --report in FOLDER, which report_page_test.sh makes:
// every figure is that of --json, and everything that page_checks.mjs asks of a page holds.

import { readFileSync } from 'node:fs';
import path from 'node:path';
import { checkPage, checkWithoutScripts, expect, finish, launch, openPage, readTables } from './page_checks.mjs';

const folder = process.argv[2];
const json = (name) => JSON.parse(readFileSync(path.join(folder, name), 'utf8'));
const same = (one, other) => Math.abs(one - other) < 1e-6 * Math.max(1, Math.abs(one));
// The text for people of an amount with all its digits.
const shows = (text, value) => Math.abs(Number(text.replaceAll(',', '')) - Number(value)) <= 0.0050001;
let compared = 0;

function expectAmount(cell, amount, what) {
  compared += 1;
  expect(cell !== undefined && cell.value !== undefined && same(Number(cell.value), amount),
    `${what} is ${cell?.value}, not ${amount}`);
  expect(cell !== undefined && shows(cell.text, amount), `${what} is shown as ${cell?.text}, not ${amount}`);
}

// Every changed cell and every cell of an added or removed row.
function compareChanges(tables, outcome) {
  for (const table of outcome.changes) {
    const rowOf = (block, name) =>
      tables.find((each) => each.name === `${table.id}/${block}`)?.rows.find((row) => row.name === name);
    for (const [kind, rows] of [['added', table.added], ['removed', table.removed]]) {
      for (const row of rows) {
        const shown = rowOf(row.block, `${kind} ${row.row}`);
        row.cells.slice(1).forEach((cell, index) => {
          compared += 1;
          expect((shown?.cells[index + 1].value ?? '') === cell, `${table.title}, ${row.name}, cell ${index + 1}: ${cell}`);
        });
      }
    }
    for (const cell of [...table.changed, ...table.cleared]) {
      const row = rowOf(cell.block, `changed ${cell.row}`) ?? rowOf(cell.block, `added ${cell.row}`);
      const shown = row?.cells[cell.column];
      compared += 1;
      const before = cell.before === '' || cell.before === '*null*' ? '(empty)' : cell.before;
      expect(shown?.value === cell.after && shown?.before === before,
        `${table.title}, ${cell.name}, ${cell.heading}: ${cell.before} to ${cell.after}`);
    }
  }
}

const blocks = {
  planned: { Sales: 'db_sales_values_sales', 'Cost of goods': 'db_sales_values_costs', Expenses: 'db_income_range_cat3' },
};
blocks.actual = Object.fromEntries(Object.entries(blocks.planned).map(([group, id]) => [group, `${id}_actual`]));

// The amounts of a plan's rows, with growth, added up by month as a reader of the plan would.
function sumsOf(plan, id, kind) {
  const block = plan.tables.flatMap((table) => table.blocks).find((each) => each.id === id);
  const first = kind === 'planned' ? 2 : 1;
  const sums = Array(12).fill(0);
  for (const row of block.rows) {
    if (row[0].startsWith('Total')) continue;
    for (let month = 0; month < 12; month += 1) {
      const cell = row[first + month] ?? '';
      const growth = /^=([-+.0-9E]+) ?\* \(1 \+ B\d+\)$/.exec(cell);
      if (growth) sums[month] += Number(growth[1]) * (1 + Number(row[1]));
      else if (cell !== '' && !Number.isNaN(Number(cell))) sums[month] += Number(cell);
    }
  }
  return [...sums, sums.reduce((sum, each) => sum + each, 0)];
}

// Sales, costs, expenses and the result before and after, against the plan and its previous version.
function compareFigures(tables, before, after) {
  for (const kind of ['planned', 'actual']) {
    const table = tables.find((each) => each.name === kind);
    const rowOf = (figure, when) =>
      table?.rows.find((row) => row.name === `${figure} ${when}`) ?? table?.rows.find((row) => row.name === `${figure}, unchanged`);
    for (const [when, plan] of [['before', before], ['after', after]]) {
      const result = Array(13).fill(0);
      for (const [group, id] of Object.entries(blocks[kind])) {
        sumsOf(plan, id, kind).forEach((sum, month) => {
          expectAmount(rowOf(group, when)?.cells[month], sum, `${kind} ${group} ${when}, ${month + 1}`);
          result[month] += group === 'Sales' ? sum : -sum;
        });
      }
      result.forEach((sum, month) =>
        expectAmount(rowOf('Result', when)?.cells[month], sum, `${kind} result ${when}, ${month + 1}`));
    }
  }
}

// What came in is what the actual cells hold, month by month, and adds up.
function compareCameIn(tables, after) {
  const table = tables.find((each) => each.name === 'came-in');
  const actual = Object.values(blocks.actual).map((id) =>
    after.tables.flatMap((each) => each.blocks).find((block) => block.id === id));
  let sums = Array(13).fill(0);
  for (const row of table?.rows ?? []) {
    if (row.cells.length === 0) continue;
    const amounts = row.cells.map((cell) => Number(cell.value));
    if (row.name === undefined) {
      sums.forEach((sum, month) => expectAmount(row.cells[month], sum, `${row.heading}, ${month + 1}`));
      sums = Array(13).fill(0);
      continue;
    }
    expect(same(amounts.slice(0, 12).reduce((sum, each) => sum + each, 0), amounts[12]), `the year of ${row.name}`);
    const inPlan = actual.some((block) => block.rows.some((cells) =>
      amounts.slice(0, 12).every((amount, month) => same(Number(cells[month + 1]), amount))));
    expect(inPlan, `${row.name} has the amounts of a row of the plan`);
    amounts.forEach((amount, month) => { sums[month] += amount; });
    compared += amounts.length;
  }
}

function compareLeftOut(tables, outcome) {
  const table = tables.find((each) => each.name === 'left-out');
  for (const [reason, total] of Object.entries(outcome.skipped.reasons)) {
    const rows = table.rows.filter((row) => row.name === reason);
    const sumOf = (column) => rows.reduce((sum, row) => sum + Number(row.cells[column].value), 0);
    compared += 2;
    expect(same(sumOf(1), total.count), `${reason}: ${sumOf(1)} of ${total.count}`);
    expect(same(sumOf(2), Number(total.sum)), `${reason}: ${sumOf(2)} of ${total.sum}`);
  }
}

async function compareImport(browser, name) {
  const page = await openPage(browser, path.join(folder, `${name}.html`));
  const tables = await readTables(page);
  const outcome = json(`${name}.json`);
  compareChanges(tables, outcome);
  compareFigures(tables, json(`${name}-before.json`), json(`${name}-after.json`));
  compareCameIn(tables, json(`${name}-after.json`));
  compareLeftOut(tables, outcome);
  const warnings = await page.locator('#warnings .badge').allTextContents();
  expect(warnings.join() === outcome.warnings.map((each) => each.code).join(), `warnings: ${warnings}`);
  const added = outcome.changes.flatMap((each) => each.added).filter((row) => !row.block.endsWith('_actual') &&
    Object.values(blocks.planned).includes(row.block)).map((row) => row.name).sort();
  const shown = tables.find((each) => each.name === 'added').rows.filter((row) => row.name).map((row) => row.heading);
  expect(shown.sort().join() === added.join(), `rows added: ${shown}`);
  await page.locator('#came-in tbody a').first().click();
  const opened = await page.locator('#account-1').isVisible();
  expect(opened, 'a link in the table opens what the account is made of');
  const timing = await page.getByText('The import took').textContent();
  expect(timing.includes(`took ${(outcome.elapsed_ms / 1000).toFixed(3)} s`), `${timing}: ${outcome.elapsed_ms} ms`);
  await page.context().close();
}

async function compareReconciliation(browser, name) {
  const page = await openPage(browser, path.join(folder, `${name}.html`));
  const tables = await readTables(page);
  const result = json(`${name}.json`);
  const amounts = tables.find((each) => each.name === 'reconciled');
  const causes = tables.filter((each) => each.name === 'causes');
  const check = (line, row) => {
    const columns = ['plan', 'written', 'booked', ...(result.books === null ? [] : ['books']), 'difference'];
    columns.forEach((column, index) => {
      if (line[column] !== null)
        expectAmount(amounts.rows.find((each) => each.name === row)?.cells[index], Number(line[column]), `${row}, ${column}`);
    });
  };
  for (const line of result.lines) {
    check(line, `${line.group}/${line.account}/${line.month ?? ''}`);
    const shown = line.causes.filter((cause) => Math.abs(Number(cause.amount)) >= 0.0005);
    if (shown.length === 0 || line.month !== null) continue;
    const found = causes.some((table) => table.caption.endsWith(`, ${line.account}`) && shown.every((cause) =>
      table.rows.some((row) => row.name === cause.code && same(Number(row.cells[0].value), Number(cause.amount)) &&
        cause.transactions.slice(0, 200).every((transaction) => row.cells[1].text.includes(transaction)))));
    compared += shown.length;
    expect(found, `the causes of ${line.account}`);
  }
  for (const group of result.groups) check(group, `${group.group}//`);
  check(result.whole, 'whole');
  expect((await page.locator('.box .badge').first().textContent()) === result.result, `${name} ${result.result}`);
  await page.context().close();
}

const browser = await launch();
await compareImport(browser, 'import');
await compareImport(browser, 'hostile');
await compareReconciliation(browser, 'differs');
await compareReconciliation(browser, 'agrees');
console.log(`${compared} figures compared`);
expect(compared > 2000, `only ${compared} figures were compared`);
await checkPage(browser, path.join(folder, 'import.html'), ['The plan was written.', '97,484.95']);
await checkWithoutScripts(browser, path.join(folder, 'hostile.html'), ['<script>alert(1)</script>']);
await checkPage(browser, path.join(folder, 'failed.html'), ['The plan was not written', 'What to do']);
await checkPage(browser, path.join(folder, 'differs.html'), ['The plan differs from the books']);
await checkPage(browser, path.join(folder, 'agrees.html'), ['The plan agrees with the books']);
await browser.close();
finish();

// usage: summary_page_test.mjs FOLDER
//
// Checks the page of krnqb summary --html in FOLDER, which summary_page_test.sh makes: it says what --json says, and
// everything that page_checks.mjs asks of a page holds.

import { readFileSync } from 'node:fs';
import path from 'node:path';
import { checkPage, expect, finish, launch, openPage, readTables } from './page_checks.mjs';

const folder = process.argv[2];
const summary = JSON.parse(readFileSync(path.join(folder, 'summary.json'), 'utf8'));
const file = path.join(folder, 'summary.html');
const browser = await launch();
const page = await openPage(browser, file);
const tables = Object.fromEntries((await readTables(page)).map((table) => [table.name, table]));
await page.context().close();

// The cell of a row below a heading.
const below = (table, row, heading) => row.cells[table.columns.indexOf(heading) - 1];
const compare = (shown, expected, what) => expect(shown === expected, `${what} is "${shown}", not "${expected}"`);

for (const [name, done] of [['done', true], ['not-done', false]]) {
  const table = tables[name];
  const imports = summary.imports.filter((each) => each.done === done);
  expect(imports.length >= 3, `there are imports for the table ${name}`);
  compare(table.rows.map((row) => row.heading).join(), imports.map((each) => each.name).join(), `order of ${name}`);
  imports.forEach((each, index) => {
    const row = table.rows[index];
    const cell = (heading) => below(table, row, heading);
    compare(cell('Result').text, each.result, `result of ${each.name}`);
    compare(cell('Written (UTC)').text, each.written.replace('T', ' ').replace('Z', ''), `time of ${each.name}`);
    compare(cell('Company').text, each.company ?? each.company_path ?? '?', `company of ${each.name}`);
    compare(cell('Plan').text, each.plan ?? '?', `plan of ${each.name}`);
    if (done) {
      compare(cell('Rows').value, String(each.rows_added), `rows of ${each.name}`);
      compare(cell('Cells').value, String(each.cells_changed), `cells of ${each.name}`);
      compare(cell('Left out').value, String(each.left_out), `amounts left out of ${each.name}`);
      compare(cell('Warnings').text, each.warnings.join(', '), `warnings of ${each.name}`);
    } else {
      compare(cell('Why').text, each.reason, `reason of ${each.name}`);
      compare(cell('What to do').text, each.remedy, `remedy of ${each.name}`);
    }
  });
}

const warnings = tables.warnings;
expect(summary.warnings.length > 0, 'there are warnings');
compare(warnings.rows.map((row) => [row.heading, ...row.cells.map((cell) => cell.value)].join(' ')).join(),
  summary.warnings.map((each) => `${each.code} ${each.imports} ${each.names}`).join(), 'the warnings');

const { totals } = summary;
await checkPage(browser, file, [`${totals.done} of ${totals.imports} imports are done, ${totals.not_done} are not.`,
  'Rows added', String(totals.rows_added), '<script>alert("1")</script>', 'missing company']);
await browser.close();
finish();

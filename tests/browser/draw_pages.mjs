// usage: draw_pages.mjs FOLDER PICTURES
//
// Draws the beginning of the pages import.html and reconcile.html in FOLDER, in light and dark, as
// PICTURES/report-PAGE-PALETTE.png.

import path from 'node:path';
import { finish, launch, openPage } from './page_checks.mjs';

const [folder, pictures] = process.argv.slice(2);
const heights = { import: 1050, reconcile: 1096 };

const browser = await launch();
for (const [name, height] of Object.entries(heights)) {
  for (const colorScheme of ['light', 'dark']) {
    const page = await openPage(browser, path.join(folder, `${name}.html`),
      { colorScheme, viewport: { width: 1100, height } });
    await page.screenshot({ path: path.join(pictures, `report-${name}-${colorScheme}.png`) });
    await page.context().close();
  }
}
await browser.close();
finish();

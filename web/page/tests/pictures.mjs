// Takes the pictures of docs/page.md: node tests/pictures.mjs FOLDER, in the environment that web/test sets.
import { join } from "node:path";
import { browser, openPage } from "./support.mjs";

const folder = process.argv[2];
const chromium = await browser();
for (const [name, options, height] of [
  ["page-light", { viewport: { width: 1280, height: 900 }, colorScheme: "light" }, 900],
  ["page-dark", { viewport: { width: 1280, height: 900 }, colorScheme: "dark" }, 900],
  ["page-phone", { viewport: { width: 360, height: 740 }, colorScheme: "light" }, 740],
]) {
  const page = await openPage(chromium, options);
  await page.settled();
  await page.locator(".calculation li").first().waitFor();
  await page.waitForTimeout(400);
  await page.screenshot({ path: join(folder, `${name}.png`), clip: { x: 0, y: 0, width: options.viewport.width, height } });
  if (name === "page-light") await page.pdf({ path: join(folder, "page-print.pdf"), format: "A4" });
  await page.context().close();
}
await chromium.close();

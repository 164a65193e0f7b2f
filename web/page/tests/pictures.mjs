// Takes the pictures of docs/page.md into docs/images: web/test tests/pictures.mjs
import { writeFileSync } from "node:fs";
import { fileURLToPath } from "node:url";
import { join } from "node:path";
import { browser, openPage } from "./support.mjs";

const folder = process.env.PICTURES ?? fileURLToPath(new URL("../../../docs/images", import.meta.url));
const QUALITY = 82;
const PICTURES = [
  ["page-light", { viewport: { width: 1280, height: 900 }, colorScheme: "light" }],
  ["page-dark", { viewport: { width: 1280, height: 900 }, colorScheme: "dark" }],
  ["page-phone", { viewport: { width: 360, height: 740 }, deviceScaleFactor: 2, colorScheme: "light" }],
];

const chromium = await browser();
for (const [name, options] of PICTURES) {
  const page = await openPage(chromium, options);
  await page.settled();
  await page.locator(".calculation li").first().waitFor();
  await page.waitForTimeout(400); // bars have grown
  const camera = await page.context().newCDPSession(page);
  const { data } = await camera.send("Page.captureScreenshot", { format: "webp", quality: QUALITY });
  writeFileSync(join(folder, `${name}.webp`), Buffer.from(data, "base64"));
  await page.context().close();
}
await chromium.close();

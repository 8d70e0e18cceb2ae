import { chromium } from 'playwright-core';
import { spawn } from 'node:child_process';
const server = spawn('timeout', ['100', 'python3','-u','-m','http.server','0','--bind','127.0.0.1','--directory','../../build/web']);
const port = await new Promise(r => server.stdout.on('data', d => { const m=/port (\d+)/.exec(d); if(m) r(m[1]); }));
const browser = await chromium.launch({executablePath:'/usr/bin/chromium', args:['--no-sandbox']});
const shots = process.argv.slice(2);
for (const shot of shots) {
  const [sample, scheme, size, extra] = shot.split(',');
  const [width,height]=size.split('x').map(Number);
  const page = await browser.newPage({viewport:{width,height}, colorScheme:scheme});
  page.on('console', m => console.log('console', m.type(), m.text())); page.on('pageerror', e => console.log('pageerror', e.stack)); page.on('requestfailed', r => console.log('failed', r.url()));
  await page.goto(`http://127.0.0.1:${port}/`);
  await page.selectOption('#sample', sample);
  await page.waitForTimeout(sample==='million'?7000:700);
  if (extra) await page.evaluate(extra);
  if (extra) await page.waitForTimeout(500);
  console.log(shot, await page.locator('.figures').innerText().then(t=>t.replace(/\n+/g,' ')), '|', await page.locator('#notice').innerText());
  await page.screenshot({path:`/tmp/wt/shots/${sample}-${scheme}-${size}.png`, fullPage: width<760});
  await page.close();
}
await browser.close(); server.kill();

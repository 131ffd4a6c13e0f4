// SPDX-License-Identifier: MIT
import { createHash } from 'node:crypto';
import { readFileSync } from 'node:fs';
import { gzipSync } from 'node:zlib';

import { defineConfig, transformWithEsbuild } from 'vite';

// What is different of the two pages. The places are empty blocks into which the tool
// writes a model; the page of a tileset fetches it.
const PAGES = {
  view: {
    input: 'index.html',
    output: 'template.html',
    places: [
      '<script type="text/plain" id="vesk-scene"></script>',
      '<script type="text/plain" id="vesk-data"></script>',
    ],
    fetches: [],
  },
  tiles: {
    input: 'tiles.html',
    output: 'tiles-page.html',
    places: [],
    fetches: ["connect-src 'self'"],
  },
};

const hash = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;

// No text of the code may end the element that holds it.
function inert(code) {
  return code.replaceAll('</script', '<\\/script').replaceAll('<!--', '<\\!--');
}

// The loader, which finds everything behind it: it is the last script of the page.
async function loader() {
  const file = new URL('src/loader.js', import.meta.url);
  const { code } = await transformWithEsbuild(readFileSync(file, 'utf8'), 'loader.js', { minify: true });
  return inert(`{${code.trim()}}`);
}

// One file: script and style stand in the page, and the policy allows these and
// nothing else. The script is compressed; the loader unpacks it.
function singleFile(own) {
  return {
    name: 'single-file',
    enforce: 'post',
    async generateBundle(_, bundle) {
      const files = Object.values(bundle);
      const page = files.find((file) => file.fileName === own.input);
      const script = inert(files.find((file) => file.type === 'chunk').code.trim());
      const first = await loader();
      const style = files.find((file) => file.fileName.endsWith('.css')).source.trim();
      const policy = [
        "default-src 'none'",
        `script-src ${hash(first)} ${hash(script)}`,
        `style-src ${hash(style)}`,
        'img-src data:',
        ...own.fetches,
        "base-uri 'none'",
        "form-action 'none'",
      ].join('; ');
      // The licence of this source is not that of the model which a page will hold.
      let html = page.source
        .replace(/\n<!-- SPDX[^>]*-->/, '')
        .replace(/\s*<script type="module"[^>]*><\/script>/, '')
        .replace(/\s*<link rel="stylesheet"[^>]*>/, '');
      const put = (place, text) => {
        if (html.split(place).length !== 2) throw new Error(`${own.input} needs one ${place}`);
        html = html.replace(place, () => text);
      };
      put('<!--policy-->', `<meta http-equiv="Content-Security-Policy" content="${policy}">`);
      put('<!--style-->', `<style>${style}</style>`);
      const code = gzipSync(script, { level: 9 }).toString('base64');
      put('<!--script-->', `<script type="text/plain" id="vesk-code">${code}</script>\n    <script>${first}</script>`);
      for (const place of own.places) put(place, place);
      for (const name of Object.keys(bundle)) delete bundle[name];
      this.emitFile({ type: 'asset', fileName: own.output, source: html });
    },
  };
}

export default defineConfig(({ mode }) => ({
  plugins: [singleFile(PAGES[mode] ?? PAGES.view)],
  build: {
    rollupOptions: { input: (PAGES[mode] ?? PAGES.view).input },
    target: 'es2022',
    emptyOutDir: false, // Template.cpp lies there too
    modulePreload: false,
    cssCodeSplit: false,
    assetsInlineLimit: 0,
    chunkSizeWarningLimit: 2000,
    reportCompressedSize: false,
  },
}));

import { createHash } from 'node:crypto';
import { defineConfig } from 'vite';

// The two empty blocks of index.html into which the tool writes a model.
const PLACES = [
  '<script type="application/json" id="vesk-scene"></script>',
  '<script type="text/plain" id="vesk-data"></script>',
];

const hash = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;

// No text of the code may end the element that holds it.
function inert(code) {
  return code.replaceAll('</script', '<\\/script').replaceAll('<!--', '<\\!--');
}

// One file: script and style stand in the page, and the policy allows these two
// and nothing else.
function singleFile() {
  return {
    name: 'single-file',
    enforce: 'post',
    generateBundle(_, bundle) {
      const files = Object.values(bundle);
      const page = files.find((file) => file.fileName === 'index.html');
      const script = inert(files.find((file) => file.type === 'chunk').code.trim());
      const style = files.find((file) => file.fileName.endsWith('.css')).source.trim();
      const policy = [
        "default-src 'none'",
        `script-src ${hash(script)}`,
        `style-src ${hash(style)}`,
        'img-src data:',
        "base-uri 'none'",
        "form-action 'none'",
      ].join('; ');
      let html = page.source
        .replace(/\s*<script type="module"[^>]*><\/script>/, '')
        .replace(/\s*<link rel="stylesheet"[^>]*>/, '');
      const put = (place, text) => {
        if (html.split(place).length !== 2) throw new Error(`index.html needs one ${place}`);
        html = html.replace(place, () => text);
      };
      put('<!--policy-->', `<meta http-equiv="Content-Security-Policy" content="${policy}">`);
      put('<!--style-->', `<style>${style}</style>`);
      put('<!--script-->', `<script type="module">${script}</script>`);
      for (const place of PLACES) put(place, place);
      for (const name of Object.keys(bundle)) delete bundle[name];
      this.emitFile({ type: 'asset', fileName: 'template.html', source: html });
    },
  };
}

export default defineConfig({
  plugins: [singleFile()],
  build: {
    target: 'es2022',
    emptyOutDir: false, // Template.cpp lies there too
    modulePreload: false,
    cssCodeSplit: false,
    assetsInlineLimit: 0,
    chunkSizeWarningLimit: 2000,
    reportCompressedSize: false,
  },
});

// SPDX-License-Identifier: MIT
// What runs first: it takes the code of the page out of its block. The page's policy
// names the code by its hash, as it does this.
const alone = document.currentScript;
const say = (text) => {
  const line = document.querySelector('.loading p');
  line.setAttribute('role', 'alert');
  line.textContent = text;
};

async function load() {
  const block = document.getElementById('vesk-code');
  const bytes = Uint8Array.from(atob(block.textContent), (c) => c.charCodeAt(0));
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream('gzip'));
  const script = document.createElement('script');
  script.type = 'module';
  script.textContent = await new Response(stream).text();
  block.replaceWith(script);
}

alone.remove();
if (globalThis.DecompressionStream) {
  load().catch((error) => say(`The model can't be shown: ${error.message}`));
} else {
  say("The model can't be shown: this browser can't unpack it (it has no DecompressionStream)");
}

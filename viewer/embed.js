// Writes a file as a C++ source with the same bytes:
//
//   node embed.js INPUT OUTPUT
//
// Compilers limit the length of a string literal, so it comes in pieces.
import { readFileSync, writeFileSync } from 'node:fs';

const PIECE = 4000;

const [input, output] = process.argv.slice(2);
const bytes = readFileSync(input);

function escaped(byte) {
  const character = String.fromCharCode(byte);
  if ('"\\?'.includes(character)) return `\\${character}`;
  if (byte >= 0x20 && byte < 0x7f) return character;
  return `\\${byte.toString(8).padStart(3, '0')}`;
}

const pieces = [];
for (let at = 0; at < bytes.length; at += PIECE) {
  pieces.push(`    "${Array.from(bytes.subarray(at, at + PIECE), escaped).join('')}",`);
}

writeFileSync(
  output,
  `#include "view/Page.h"

namespace VeskTool {
namespace {

constexpr std::string_view kPieces[] = {
${pieces.join('\n')}
};

}  // namespace

std::string pageTemplate() {
  std::string page;
  for (const std::string_view piece : kPieces) page += piece;
  return page;
}

}  // namespace VeskTool
`,
);

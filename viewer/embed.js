// SPDX-License-Identifier: MIT
// Makes a file a part of a program:
//
//   node embed.js INPUT OUTPUT.cpp
//
// Long string literals and constant expressions are more than some compilers take:
// the file stands in an array of numbers.
import { readFileSync, writeFileSync } from 'node:fs';

const IN_A_ROW = 24;

const [input, output] = process.argv.slice(2);
const bytes = readFileSync(input);

const rows = [];
for (let at = 0; at < bytes.length; at += IN_A_ROW) {
  rows.push(`    ${bytes.subarray(at, at + IN_A_ROW).join(',')},`);
}

writeFileSync(
  output,
  `#include "view/Page.h"

namespace VeskTool {
namespace {

const unsigned char kPage[] = {
${rows.join('\n')}
};

}  // namespace

std::string pageTemplate() { return {std::begin(kPage), std::end(kPage)}; }

}  // namespace VeskTool
`,
);

// SPDX-License-Identifier: MIT
// Makes a file a part of a program:
//
//   node embed.js INPUT OUTPUT.cpp HEADER FUNCTION
//
// The header declares the function, which returns the file as a string.
// Long string literals and constant expressions are more than some compilers take:
// the file stands in an array of numbers.
import { readFileSync, writeFileSync } from 'node:fs';

const IN_A_ROW = 24;

const [input, output, header, name] = process.argv.slice(2);
const bytes = readFileSync(input);

const rows = [];
for (let at = 0; at < bytes.length; at += IN_A_ROW) {
  rows.push(`    ${bytes.subarray(at, at + IN_A_ROW).join(',')},`);
}

writeFileSync(
  output,
  `#include "${header}"

namespace VeskTool {
namespace {

const unsigned char kPage[] = {
${rows.join('\n')}
};

}  // namespace

std::string ${name}() { return {std::begin(kPage), std::end(kPage)}; }

}  // namespace VeskTool
`,
);

// SPDX-License-Identifier: MIT
#ifndef VESK_INPUT_TAGREADER_H
#define VESK_INPUT_TAGREADER_H

#include <string_view>
#include <vector>

#include "input/Input.h"
#include "prims/TagLines.h"

namespace Vesk {

// Reads the tags of a box or a reducer back; see writeTagLines and tagToken for
// what is written. What was in `tags` is gone.
//
// A name with "*" in it does not come back from mode 2, one with "," not from
// mode 3; a name that ends in pairs of numbers, "a 1 2", comes back from mode 3
// as a name with values. Mode 2 puts tags without values first.

// Mode 2: from the lines behind the current one. Throws kBadNames and
// kBadValues.
void readTagLines(Input& in, std::vector<TagEntry>& tags);

// How the tags of a primitive differ in mode 3.
struct TagTokens {
  std::string_view keyword;  // of their lines
  bool lastRepeats;          // "ed a 1 2ed a 1 2 3 4" is one tag with two pairs
  ReadCause unknown;         // of a token that is no tag
};

// Mode 3: from the lines with their keyword, closing attributes too. If there
// are any the scanner is at the end of input afterwards. A token that is neither
// throws `unknown`, with its first word.
void readTagTokens(Input& in, const TagTokens& form, std::vector<TagEntry>& tags);

}  // namespace Vesk

#endif

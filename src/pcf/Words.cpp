// SPDX-License-Identifier: MIT
#include "pcf/Words.h"

#include <cstddef>

#include "pcf/Text.h"
#include "pcf/shapes/Families.h"

namespace Vesk::Pcf {
namespace {

// A word, or the beginning of one that goes on with '-' or a digit.
struct Row {
  std::string_view word;
  Word meaning;
};

// clang-format off
constexpr Row kRows[] = {
    {"WELD",                        Word::kWeld},
    {"MESSAGE",                     Word::kMessage},
    {"END-CONNECTION",              Word::kMark},
    {"END-POSITION",                Word::kMark},
    {"START-CONNECTION",            Word::kMark},
    {"START-POSITION",              Word::kMark},
    {"INSTRUMENT-BALLOON",          Word::kMark},
    {"SYMBOL",                      Word::kNothing},
    {"COORDINATE-SYMBOL",           Word::kNothing},
    {"REFERENCE-LOCATION",          Word::kNothing},
    {"FLOW-ARROW",                  Word::kNothing},
    {"LOCATION-POINT",              Word::kNothing},
    {"CLEANING-SYMBOL",             Word::kNothing},

    {"TEXT",                        Word::kText},
    {"MESSAGE-TEXT",                Word::kText},
    {"NOTE",                        Word::kText},
    {"LABEL",                       Word::kText},
    {"DESCRIPTION",                 Word::kText},

    {"ANGLE",                       Word::kAttribute},
    {"AREA",                        Word::kHeader},
    {"ATTRIBUTE",                   Word::kHeader},
    {"BEND-RADIUS",                 Word::kAttribute},
    {"BOLT-DIA",                    Word::kAttribute},
    {"BOLT-ITEM-CODE",              Word::kAttribute},
    {"BOLT-ITEM-DESCRIPTION",       Word::kAttribute},
    {"BOLT-LENGTH",                 Word::kAttribute},
    {"BOLT-QUANTITY",               Word::kAttribute},
    {"BOLT-UCI",                    Word::kAttribute},
    {"CATEGORY",                    Word::kAttribute},
    {"COMPONENT-ATTRIBUTE",         Word::kAttribute},
    {"COMPONENT-IDENTIFIER",        Word::kAttribute},
    {"CONNECTION-REFERENCE",        Word::kAttribute},
    {"CONTINUATION",                Word::kAttribute},
    {"CUT-PIECE-LENGTH",            Word::kAttribute},
    {"DATE",                        Word::kHeader},
    {"DIRECTION",                   Word::kAttribute},
    {"ERECTION-ITEM",               Word::kAttribute},
    {"FABRICATION-ITEM",            Word::kAttribute},
    {"FLAT-DIRECTION",              Word::kAttribute},
    {"FLOW",                        Word::kAttribute},
    {"HEAT-NUMBER",                 Word::kAttribute},
    {"INSULATION",                  Word::kHeader},
    {"INSULATION-SPEC",             Word::kHeader},
    {"ITEM-ATTRIBUTE",              Word::kAttribute},
    {"ITEM-CODE",                   Word::kAttribute},
    {"ITEM-DESCRIPTION",            Word::kAttribute},
    {"LINE-ID",                     Word::kHeader},
    {"MASTER-COMPONENT-IDENTIFIER", Word::kAttribute},
    {"MATERIAL",                    Word::kHeader},
    {"MATERIAL-IDENTIFIER",         Word::kAttribute},
    {"MATERIAL-LIST",               Word::kAttribute},
    {"MATERIALS",                   Word::kMaterials},
    {"MISC-SPEC",                   Word::kHeader},
    {"NAME",                        Word::kAttribute},
    {"NOMINAL-CLASS",               Word::kHeader},
    {"PAINTING-SPEC",               Word::kHeader},
    {"PIPE-CLASS",                  Word::kHeader},
    {"PIPE-SPEC",                   Word::kHeader},
    {"PIPELINE",                    Word::kHeader},
    {"PIPING-CLASS",                Word::kHeader},
    {"PIPING-SPEC",                 Word::kHeader},
    {"PROJECT-IDENTIFIER",          Word::kHeader},
    {"QUANTITY",                    Word::kAttribute},
    {"REVISION",                    Word::kHeader},
    {"SKEY",                        Word::kAttribute},
    {"SPEC",                        Word::kHeader},
    {"SPINDLE",                     Word::kAttribute},
    {"SPOOL",                       Word::kHeader},
    {"START-CO-ORDS",               Word::kHeader},
    {"STATUS",                      Word::kAttribute},
    {"SUPPORT-DIRECTION",           Word::kAttribute},
    {"SUPPORT-ANGLE",               Word::kAttribute},
    {"TAG",                         Word::kAttribute},
    {"TAP-CONNECTION",              Word::kAttribute},
    {"TRACING",                     Word::kHeader},
    {"UCI",                         Word::kAttribute},
    {"UNIQUE-COMPONENT-IDENTIFIER", Word::kAttribute},
    {"UNITS",                       Word::kHeader},
    {"WEIGHT",                      Word::kAttribute},
};
// clang-format on

bool beginsWith(std::string_view text, std::string_view word) {
  if (text.substr(0, word.size()) != word) return false;
  if (text.size() == word.size()) return true;
  const char next = text[word.size()];
  return next == '-' || (next >= '0' && next <= '9');
}

const Row* rowOf(std::string_view word) {
  const Row* longest = nullptr;
  for (const Row& row : kRows) {
    if (!beginsWith(word, row.word)) continue;
    if (longest == nullptr || row.word.size() > longest->word.size()) longest = &row;
  }
  return longest;
}

bool endsWith(std::string_view word, std::string_view end) {
  return word.size() >= end.size() && word.substr(word.size() - end.size()) == end;
}

}  // namespace

Word wordOf(std::string_view word) {
  if (roleOf(word) != Role::kNone) return Word::kPoint;
  if (const Row* row = rowOf(word)) return row->meaning;
  const Family family = familyOf(word, "");
  if (family == Family::kNothing) return Word::kNothing;
  if (family != Family::kUnknown) return Word::kBody;
  // A file begins with the names of its style files.
  return endsWith(word, "-FILES") ? Word::kHeader : Word::kUnknown;
}

Role roleOf(std::string_view key) {
  switch (key.empty() ? '\0' : key.front()) {
    case 'E':
    case 'e':
      return isWord(key, "END-POINT") ? Role::kEnd : Role::kNone;
    case 'C':
    case 'c':
      if (isWord(key, "CENTRE-POINT") || isWord(key, "CENTER-POINT")) return Role::kCentre;
      return isWord(key, "CO-ORDS") || isWord(key, "COORDS") ? Role::kPlace : Role::kNone;
    case 'B':
    case 'b':
      break;
    default:
      return Role::kNone;
  }
  constexpr std::string_view kBranch = "BRANCH";
  if (!isWord(key.substr(0, kBranch.size()), kBranch)) return Role::kNone;
  key.remove_prefix(kBranch.size());
  while (!key.empty() && key.front() >= '0' && key.front() <= '9') key.remove_prefix(1);
  return isWord(key, "-POINT") ? Role::kBranch : Role::kNone;
}

}  // namespace Vesk::Pcf

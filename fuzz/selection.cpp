// SPDX-License-Identifier: MIT
// Selections: any texts of any criterion, of which a wrong one is refused with a reason. What
// takes an element and what takes all others are never the same; a text takes the same twice.
//
//   again and again: 1 byte for the criterion, its highest bit for --not; then a text of up to
//   63 bytes behind its length
#include "select/Selection.h"

#include <memory>
#include <string>
#include <vector>

#include "Fuzz.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pline.h"
#include "vesk/Torus.h"

using VeskFuzz::check;

namespace {

const std::vector<std::unique_ptr<Vesk::Geo>>& model() {
  static const std::vector<std::unique_ptr<Vesk::Geo>> all = [] {
    std::vector<std::unique_ptr<Vesk::Geo>> made;
    made.push_back(std::make_unique<Vesk::Cyl>(GeVector(0, 0, 0), GeVector(1000, 0, 0), 114.3));
    made.push_back(std::make_unique<Vesk::Torus>(GeVector(1000, 305, 0), GeVector(1000, 0, 0),
                                                 GeVector(1305, 305, 0), 114.3));
    made.push_back(
        std::make_unique<Vesk::Cone>(GeVector(0, 0, 900), GeVector(200, 0, 900), 114.3, 88.9));
    made.push_back(std::make_unique<Vesk::Box>(GeVector(0, 0, -110), GeVector(500, 0, -110),
                                               GeVector(0, 500, -110), GeVector(0, 0, -60)));
    made.push_back(
        std::make_unique<Vesk::Pline>(std::initializer_list<GePoint>{{0, 0, 0}, {0, 0, 9}}));
    return made;
  }();
  return all;
}

Vesk::SelectionElement elementOf(std::size_t i) {
  return {*model()[i], i % 2 == 0 ? "P-1001  " : "STEEL   ", "01", 10 * i + 1, 10 * i + 3};
}

// Which elements are taken, as the bits of a number.
unsigned takenBy(Vesk::Selection& selection) {
  if (selection.needsModel()) {
    for (std::size_t i = 0; i < model().size(); ++i) selection.gather(elementOf(i));
    selection.finish();
  }
  unsigned taken = 0;
  for (std::size_t i = 0; i < model().size(); ++i) {
    if (selection.takes(elementOf(i))) taken |= 1U << i;
  }
  return taken;
}

// A text that is refused is left out.
bool add(Vesk::Selection& selection, Vesk::Criterion criterion, const std::string& text,
         bool isNegated) {
  try {
    selection.add(criterion, text, isNegated);
  } catch (const Vesk::SelectionError& error) {
    check(error.what()[0] != '\0', "a refusal has a reason", text);
    return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  VeskFuzz::Bytes bytes(data, size);
  Vesk::Selection whole;
  Vesk::Selection again;
  unsigned all = (1U << model().size()) - 1;
  for (int count = 0; !bytes.empty() && count < 8; ++count) {
    const int choice = bytes.byte();
    const auto criterion = static_cast<Vesk::Criterion>((choice & 0x7F) % Vesk::kCriteria);
    const std::string text = bytes.text(63);
    const bool isNegated = (choice & 0x80) != 0;
    Vesk::Selection wanted;
    Vesk::Selection unwanted;
    if (!add(wanted, criterion, text, false)) continue;
    check(add(unwanted, criterion, text, true), "what is taken can be left out", text);
    const unsigned taken = takenBy(wanted);
    check(takenBy(unwanted) == (all & ~taken), "--not takes all others", text);
    add(whole, criterion, text, isNegated);
    add(again, criterion, text, isNegated);
  }
  check(takenBy(whole) == takenBy(again), "the same texts take the same");
  return 0;
}

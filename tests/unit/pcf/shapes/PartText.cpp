// SPDX-License-Identifier: MIT
#include "PartText.h"

#include <sstream>

namespace Vesk::Pcf {
namespace {

GeVector vectorOf(std::istream& in) {
  GeVector v;
  in >> v.x >> v.y >> v.z;
  return v;
}

}  // namespace

Part partOf(Family family, const std::string& words) {
  Part part;
  part.family = family;
  std::istringstream in(words);
  std::vector<End>* list = &part.ends;
  for (std::string word, text; in >> word;) {
    if (word == "e" || word == "b") {
      list = word == "e" ? &part.ends : &part.branches;
      End end;
      end.at = GePoint(vectorOf(in));
      in >> end.outside;
      list->push_back(end);
    } else if (word == "kind") {
      in >> text;
      list->back().kind = endKindOf(text);
    } else if (word == "line") {
      list->back().line = vectorOf(in);
    } else if (word == "c") {
      part.centre = GePoint(vectorOf(in));
    } else if (word == "face") {
      in >> part.face;
    } else if (word == "turn") {
      part.halfTurn = vectorOf(in);
    } else if (word == "spindle") {
      part.spindle = vectorOf(in);
    } else if (word == "by") {
      in >> text;
      part.actuator = actuatorOf(text);
    } else if (word == "along") {
      part.along = vectorOf(in);
    } else if (word == "tol") {
      in >> part.tolerance;
    }
  }
  return part;
}

}  // namespace Vesk::Pcf

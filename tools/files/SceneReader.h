// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_SCENEREADER_H
#define VESK_TOOLS_SCENEREADER_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "draw/Drawing.h"
#include "files/SelectionOptions.h"
#include "mesh/Scene.h"
#include "terminal/Exit.h"
#include "terminal/Session.h"
#include "vesk/mesh/Fineness.h"

namespace VeskTool {

// The options that say how fine round shapes are.
class FinenessOptions {
 public:
  void define(CLI::App& app);

  Vesk::Fineness fineness() const;

 private:
  double tolerance_ = 0.0;
  std::string quality_ = "normal";
};

// Reads the chosen elements of record files into one scene; a kind of an element is
// a Kind. Damaged elements and those that can't be shown are said. Returns kNo if there are any.
// Throws what openRecords and requireRecords throw.
//
// The whole scene is in memory: about 300 bytes for an element that shares its
// mesh with others.
Exit readScene(const std::vector<std::string>& files, const Vesk::Fineness& fineness,
               Choice& choice, Session& session, Vesk::Scene& scene);

// The same for a drawing: round shapes have as many pieces as can be told apart at
// its scale, which the scene is read for first. The elements are kept till then,
// about 300 bytes for each.
Exit readDrawnScene(const std::vector<std::string>& files, const Vesk::DrawingStyle& style,
                    Choice& choice, Session& session, Vesk::Scene& scene);

// Says which elements of a scene can't be shown; kNo if there are any.
Exit sayFailures(const Vesk::Scene& scene, Session& session);

}  // namespace VeskTool

#endif

// SPDX-License-Identifier: MIT
#ifndef VESK_TOOLS_VIEW_DRAWINGOPTIONS_H
#define VESK_TOOLS_VIEW_DRAWINGOPTIONS_H

#include <CLI/CLI.hpp>
#include <string>

#include "draw/Drawing.h"
#include "terminal/Streams.h"

namespace VeskTool {

// The options of drawings: --from, --pixels, --background, --unit, --no-faces, --plain.
class DrawingOptions {
 public:
  void define(CLI::App& app);

  // Whether any of them was given.
  bool isGiven() const;

  // Throws a Failure with Exit::kUsage for a wrong size or colour.
  Vesk::DrawingStyle style() const;

  // Without faces: lines alone.
  bool hasFaces() const { return !lines_; }

 private:
  CLI::App* app_ = nullptr;
  std::string from_ = "iso";
  std::string size_ = "1600x1200";
  std::string background_ = "white";
  double unit_ = 1.0;
  bool lines_ = false;
  bool plain_ = false;
};

}  // namespace VeskTool

#endif

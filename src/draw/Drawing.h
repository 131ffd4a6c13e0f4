// SPDX-License-Identifier: MIT
#ifndef VESK_DRAW_DRAWING_H
#define VESK_DRAW_DRAWING_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "draw/Colour.h"
#include "draw/Projection.h"
#include "draw/SeenLines.h"
#include "draw/StandardView.h"
#include "draw/Surfaces.h"
#include "mesh/Scene.h"
#include "vesk/mesh/Fineness.h"

namespace Vesk {

struct DrawingStyle {
  StandardView view;
  int width = 1600;  // pixels, from 1 on
  int height = 1200;
  Colour background{255, 255, 255};
  std::vector<Colour> colours;  // by the kind of an element; others are grey
  double unit = 1.0;            // of the scene, in millimetres
  bool isPlain = false;         // without scale bar and axes

  // Called often while a drawing is made or painted, on the thread that makes it;
  // what it throws ends the work.
  std::function<void()> poll;
};

// A line of any colour that belongs to no element.
struct InkLine {
  std::vector<ScreenPoint> points;
  double width = 1.0;
  Colour colour;
};

struct Dot {
  ScreenPoint place;
  std::uint32_t element = 0;
};

struct Label {
  std::string text;       // bytes in any encoding
  ScreenPoint place;      // start of the base line
  ScreenPoint along;      // one height of a capital to the right, in pixels
  ScreenPoint up;         // and one up
  double width = 0.0;     // in such heights; 0: as wide as the font makes it
  bool isMiddle = false;  // the place is the middle of the base line
  Colour colour;
};

// What stands where in a drawing, before it becomes a picture or a vector file.
//
// A text lies in its plane as in the model where it can be read so, and else
// stands level. Of level ones that would lie over each other the first stays, of
// others the first hundred: more would be painted for nobody.
class Drawing {
 public:
  static constexpr int kMostOverEachOther = 100;

  // Pixels for a unit of the scene, as a drawing of this style has them.
  static double scaleOf(const Scene& scene, const DrawingStyle& style);

  // As fine as can be told apart in a drawing of this style: round shapes are no more
  // than a quarter of a pixel off. The scene may be rough; its bounds count.
  static Fineness finenessFor(const Scene& scene, const DrawingStyle& style);

  // The scene outlives it.
  Drawing(const Scene& scene, const DrawingStyle& style);
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  const DrawingStyle& style() const { return style_; }
  const Projection& projection() const { return projection_; }
  const Surfaces& surfaces() const { return surfaces_; }

  const std::vector<Stroke>& strokes() const { return strokes_; }
  // Of a band, in the order of nearestFirst().
  const std::vector<std::uint32_t>& instancesIn(int band) const {
    return instances_[static_cast<std::size_t>(band)];
  }
  const std::vector<Dot>& dots() const { return dots_; }
  const std::vector<Label>& labels() const { return labels_; }

  // Texts that are too far off to be in the drawing.
  std::size_t farTexts() const { return farTexts_; }

  // Texts that are left out because a hundred others lie where they would.
  std::size_t buriedTexts() const { return buriedTexts_; }
  const std::vector<InkLine>& scaleBar() const { return scaleBar_; }
  const std::vector<InkLine>& axes() const { return axes_; }

  // Of lines and texts: dark on what is light, light on what is dark.
  Colour ink() const { return ink_; }
  Colour colourOf(std::uint32_t element) const;

  // In pixels. Small drawings have thin lines, and so have those of large models:
  // there an outline takes no more than a fifth of what most solids are wide.
  double widthOf(LineWeight weight) const;
  double dotRadius() const { return 3.0 * pen_; }

  // How wide the background is kept free around a text.
  double haloOf(const Label& label) const;

 private:
  static double unitOf(const DrawingStyle& style);
  static double penOf(double unit, double thickness);
  static ScreenArea areaOf(const DrawingStyle& style);

  void addLabels(const std::vector<bool>& isSeen);
  void addScaleBar();
  void addAxes();
  void addNote(std::string text, const ScreenPoint& middle, const Colour& colour);

  const Scene& scene_;
  DrawingStyle style_;
  double unit_;  // 1 for a drawing of 900 pixels
  Projection projection_;
  Surfaces surfaces_;
  double pen_;  // the unit of lines and points of the model, unit_ at the most
  Colour ink_;
  std::vector<Stroke> strokes_;
  std::vector<std::vector<std::uint32_t>> instances_;
  std::vector<Dot> dots_;
  std::vector<Label> labels_;
  std::size_t farTexts_ = 0;
  std::size_t buriedTexts_ = 0;
  std::vector<InkLine> scaleBar_;
  std::vector<InkLine> axes_;
};

}  // namespace Vesk

#endif

// SPDX-License-Identifier: MIT
#include "view/Svg.h"

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "draw/StrokeFont.h"
#include "text/Numbers.h"
#include "view/Palette.h"

namespace VeskTool {
namespace {

using Vesk::Colour;
using Vesk::Drawing;
using Vesk::Label;
using Vesk::LineWeight;
using Vesk::ScreenPoint;
using Vesk::Stroke;

// A capital letter is about so high in parts of the size of its font.
constexpr double kCapital = 0.72;

std::string number(double value) { return trimmedNumber(value, 2); }

std::string attribute(std::string_view name, std::string_view value) {
  return ' ' + std::string(name) + "=\"" + std::string(value) + '"';
}

std::string attribute(std::string_view name, double value) {
  return attribute(name, number(value));
}

void appendPath(std::string& to, const std::vector<ScreenPoint>& points) {
  for (std::size_t i = 0; i < points.size(); ++i) {
    to += i == 0 ? 'M' : i == 1 ? 'L' : ' ';
    to += number(points[i].x) + ' ' + number(points[i].y);
  }
}

void appendUtf8(std::string& to, std::uint32_t c) {
  const auto tail = [&](unsigned shift) { to += static_cast<char>(0x80U | (c >> shift & 0x3FU)); };
  if (c < 0x80) {
    to += static_cast<char>(c);
  } else if (c < 0x800) {
    to += static_cast<char>(0xC0U | c >> 6U);
    tail(0);
  } else if (c < 0x10000) {
    to += static_cast<char>(0xE0U | c >> 12U);
    tail(6), tail(0);
  } else {
    to += static_cast<char>(0xF0U | c >> 18U);
    tail(12), tail(6), tail(0);
  }
}

class Writer {
 public:
  Writer(TextSink& to, const Drawing& drawing) : to_(to), drawing_(drawing) {}

  void write(std::string_view title) {
    const Vesk::DrawingStyle& style = drawing_.style();
    const std::string width = std::to_string(style.width);
    const std::string height = std::to_string(style.height);
    to_.write("<svg xmlns=\"http://www.w3.org/2000/svg\"" + attribute("width", width) +
              attribute("height", height) + attribute("viewBox", "0 0 " + width + ' ' + height) +
              " role=\"img\">\n");
    to_.write("<title>" + xmlText(title) + "</title>\n");
    if (style.background.alpha != 0) {
      to_.write("<rect width=\"100%\" height=\"100%\"" +
                attribute("fill", hexOf(style.background)) + "/>\n");
    }
    writeStrokes("edges", LineWeight::kEdge);
    writeStrokes("outlines", LineWeight::kOutline);
    writeStrokes("lines", LineWeight::kLine);
    writePoints();
    writeScale();
    writeTexts();
    to_.write("</svg>\n");
  }

 private:
  static std::string beginLines(std::string_view id, double width) {
    return "<g" + attribute("id", id) + " fill=\"none\" stroke-linecap=\"round\" " +
           "stroke-linejoin=\"round\"" + attribute("stroke-width", width);
  }

  void writeStrokes(std::string_view id, LineWeight weight) {
    const bool hasColours = weight == LineWeight::kLine;
    std::string text = beginLines(id, drawing_.widthOf(weight));
    if (!hasColours) text += attribute("stroke", hexOf(drawing_.ink()));
    text += ">\n";
    const std::size_t empty = text.size();
    const Stroke* last = nullptr;
    for (const Stroke& stroke : drawing_.strokes()) {
      if (stroke.weight != weight) continue;
      if (last == nullptr || last->element != stroke.element) {
        if (last != nullptr) text += "\"/>\n";
        text += "<path";
        if (hasColours) text += attribute("stroke", hexOf(drawing_.colourOf(stroke.element)));
        text += " d=\"";
      }
      appendPath(text, stroke.points);
      last = &stroke;
    }
    if (text.size() == empty) return;
    to_.write(text + "\"/>\n</g>\n");
  }

  void writePoints() {
    if (drawing_.dots().empty()) return;
    std::string text = "<g id=\"points\">\n";
    for (const Vesk::Dot& dot : drawing_.dots()) {
      text += "<circle" + attribute("cx", dot.place.x) + attribute("cy", dot.place.y) +
              attribute("r", drawing_.dotRadius()) +
              attribute("fill", hexOf(drawing_.colourOf(dot.element))) + "/>\n";
    }
    to_.write(text + "</g>\n");
  }

  void writeScale() {
    if (drawing_.scaleBar().empty() && drawing_.axes().empty()) return;
    std::string text = beginLines("scale", drawing_.widthOf(LineWeight::kOutline)) + ">\n";
    for (const auto* lines : {&drawing_.scaleBar(), &drawing_.axes()}) {
      for (const Vesk::InkLine& line : *lines) {
        text += "<path" + attribute("stroke", hexOf(line.colour)) + " d=\"";
        appendPath(text, line.points);
        text += "\"/>\n";
      }
    }
    to_.write(text + "</g>\n");
  }

  void writeTexts() {
    if (drawing_.labels().empty()) return;
    std::string text = "<g id=\"texts\" font-family=\"Arial, Helvetica, sans-serif\"";
    const Colour& paper = drawing_.style().background;
    if (paper.alpha != 0) {
      text +=
          " paint-order=\"stroke\" stroke-linejoin=\"round\"" + attribute("stroke", hexOf(paper));
    }
    to_.write(text + ">\n");
    for (const Label& label : drawing_.labels()) to_.write(textOf(label));
    to_.write("</g>\n");
  }

  std::string textOf(const Label& label) const {
    const double height = std::sqrt(label.up.x * label.up.x + label.up.y * label.up.y);
    const double size = height / kCapital;
    std::string text = "<text" + attribute("fill", hexOf(label.colour)) +
                       attribute("font-size", size) +
                       attribute("stroke-width", 2.0 * drawing_.haloOf(label));
    if (label.isMiddle) text += " text-anchor=\"middle\"";
    if (label.width > 0.0) {
      text += attribute("textLength", label.width * height) +
              " lengthAdjust=\"spacingAndGlyphs\" transform=\"matrix(";
      for (const double part : {label.along.x, label.along.y, -label.up.x, -label.up.y}) {
        text += trimmedNumber(part / height, 4) + ' ';
      }
      text += number(label.place.x) + ' ' + number(label.place.y) + ")\"";
    } else {
      text += attribute("x", label.place.x) + attribute("y", label.place.y);
    }
    return text + " xml:space=\"preserve\">" + xmlText(label.text) + "</text>\n";
  }

  TextSink& to_;
  const Drawing& drawing_;
};

}  // namespace

std::string xmlText(std::string_view text) {
  std::string xml;
  for (const std::uint32_t c : Vesk::charactersOf(text)) {
    const bool isControl = (c < 0x20 && c != '\t') || (c >= 0x7F && c < 0xA0);
    if (c == '<') {
      xml += "&lt;";
    } else if (c == '>') {
      xml += "&gt;";
    } else if (c == '&') {
      xml += "&amp;";
    } else if (c == '"') {
      xml += "&quot;";
    } else {
      appendUtf8(xml, isControl || c == 0xFFFE || c == 0xFFFF ? 0xFFFD : c);
    }
  }
  return xml;
}

void writeSvg(TextSink& to, const Drawing& drawing, std::string_view title) {
  Writer(to, drawing).write(title);
}

}  // namespace VeskTool

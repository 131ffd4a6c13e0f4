// SPDX-License-Identifier: MIT
#include "vesk/Pline.h"

#include <cmath>

#include "output/NumberText.h"
#include "output/Output.h"
#include "output/RecordWords.h"
#include "prims/CentroidAccumulator.h"
#include "vesk/GeConstants.h"

namespace Vesk {

GePoint Pline::vertex(int i) const {
  if (i < 0 || static_cast<std::size_t>(i) >= vertices.size()) return {};
  return vertices[static_cast<std::size_t>(i)];
}

void Pline::addArc(double radius, std::int32_t a, std::int32_t b, std::int32_t c) {
  arcs.push_back({radius, {a, b, c}});
}

std::int32_t Pline::write(Output& out) const {
  if (out.mode == kFixedColumns) {
    if (vertices.size() == 1) {
      writePoint(out);
    } else {
      writeSegments(out);
    }
  } else if (out.mode == kTokens) {
    writeTokens(out);
  }
  return static_cast<std::int32_t>(out.recs.size());
}

void Pline::writePoint(Output& out) const {
  out.beginRecord(Keywords::kPoint.fixedColumns, true);
  out.addPoint9(vertices.front());
  if (pointSize >= 1) {
    out.addNumber(pointSize);
  } else if (!(pointDirection == GePoint())) {
    out.addPoint9(0.0, 0.0, 0.0);
    out.addPoint9(pointDirection);
  }
}

void Pline::writeSegments(Output& out) const {
  for (std::size_t i = 1; i < vertices.size(); ++i) {
    if (i > 1) {
      out.flushLine();
      if (!out.incrementCounter()) return;
    }
    out.beginRecord(Keywords::kSegment.fixedColumns, true);
    out.addPoint9(vertices[i - 1]);
    out.addPoint9(vertices[i]);
  }
}

void Pline::writeTokens(Output& out) const {
  out.beginRecord(Keywords::kSegment.tokens, true);
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const GeVector p = vertices[i] - (i == 0 ? GePoint() : vertices.front());
    out.addPointToken(Words::kPoint, p.x, p.y, p.z, out.pointDecimals, i + 1 < vertices.size());
  }
  for (const ArcEntry& arc : arcs) {
    std::string token = ",";
    token += Words::kArc;
    appendFixed(token, arc.radius, out.pointDecimals, 0);
    for (const std::int32_t value : arc.values) {
      token += ' ';
      appendFixed(token, value, 0, 0);
    }
    out.addText(token);
  }
}

void Pline::move(const GeVector& v) {
  for (GePoint& vertex : vertices) vertex += v;
}

void Pline::rot(const GeMatrix& m) {
  for (GePoint& vertex : vertices) vertex = m * vertex;
  pointDirection = GePoint(m * GeVector(pointDirection.x, pointDirection.y, pointDirection.z));
}

void Pline::scale(double factor) {
  const GeMatrix m = GeMatrix::scaling(factor);
  for (GePoint& vertex : vertices) vertex = m * vertex;
  for (ArcEntry& arc : arcs) arc.radius *= factor;
}

Extents& Pline::addExtents(Extents& box) const {
  for (const GePoint& vertex : vertices) box.add(vertex);
  return box;
}

std::int32_t Pline::pieceCount() const {
  return vertices.size() < 3 ? 1 : static_cast<std::int32_t>(vertices.size() - 1);
}

GePoint& Pline::centroid(GePoint& p) const {
  CentroidAccumulator accumulator;
  for (std::size_t i = 1; i < vertices.size(); ++i) {
    const double weight = distance(vertices[i - 1], vertices[i]) / 2.0;
    accumulator.add(vertices[i - 1], weight);
    accumulator.add(vertices[i], weight);
  }
  return p = accumulator.point();
}

bool Pline::equal(const Geo& other, double tolerance) const {
  const auto* pline = sameKind<Pline>(other);
  if (pline == nullptr || pline->vertices.size() != vertices.size()) return false;
  for (std::size_t i = 0; i < vertices.size(); ++i) {
    const GeVector d = vertices[i] - pline->vertices[i];
    for (const double difference : {d.x, d.y, d.z}) {
      if (!(std::fabs(difference) <= tolerance)) return false;
    }
  }
  return true;
}

}  // namespace Vesk

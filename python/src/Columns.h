// SPDX-License-Identifier: MIT
#ifndef VESK_PYTHON_COLUMNS_H
#define VESK_PYTHON_COLUMNS_H

#include <string>
#include <tuple>
#include <vector>

#include "Column.h"
#include "vesk/Box.h"
#include "vesk/Cone.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Red.h"
#include "vesk/Relb.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace VeskPython {

// The elements of a kind as columns. Each holds just the fields of the C++ class, so that
// what was read is written with the same bytes; `each` names them, in the order in which
// offsets come before the items that they count.

// What every element has.
struct ElementColumns {
  Column<std::int32_t> header;   // into the headers of the plant
  Column<std::int32_t> counter;  // F3; -1: blank
  Column<std::uint32_t> file;    // into the files of the plant
  Column<std::int64_t> line;     // its first one, from 1; 0: of no file

  template <class Do>
  void each(Do&& act) {
    act("header", header, Rows::kElements);
    act("counter", counter, Rows::kElements);
    act("file", file, Rows::kElements);
    act("line", line, Rows::kElements);
  }
};

// Names with pairs of numbers: the marks of a box, the tags of a reducer.
struct TagColumns {
  Column<std::int64_t> offsets = started();
  Column<std::int64_t> nameOffsets = started();
  Column<std::uint8_t> names;
  Column<std::int64_t> valueOffsets = started();
  Column<double> values{{2}};

  template <class Do>
  void each(Do&& act) {
    act("tag_offsets", offsets, Rows::kOffsets);
    act("tag_name_offsets", nameOffsets, Rows::kItems);
    act("tag_names", names, Rows::kItems);
    act("tag_value_offsets", valueOffsets, Rows::kItems);
    act("tag_values", values, Rows::kItems);
  }
  void add(const std::vector<Vesk::TagEntry>& tags);
  std::vector<Vesk::TagEntry> get(std::size_t row) const;

  static Column<std::int64_t> started();
};

struct ArcColumns {
  Column<std::int64_t> offsets = TagColumns::started();
  Column<double> radius;
  Column<std::int32_t> values{{3}};

  template <class Do>
  void each(Do&& act) {
    act("arc_offsets", offsets, Rows::kOffsets);
    act("arc_radius", radius, Rows::kItems);
    act("arc_values", values, Rows::kItems);
  }
  void add(const std::vector<Vesk::ArcEntry>& arcs);
  std::vector<Vesk::ArcEntry> get(std::size_t row) const;
};

struct CylColumns {
  using Primitive = Vesk::Cyl;
  static constexpr const char* kName = "cylinders";
  ElementColumns element;
  Column<double> start{{3}};
  Column<double> axis{{3}};
  Column<double> diameter;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("start", start, Rows::kElements);
    act("axis", axis, Rows::kElements);
    act("diameter", diameter, Rows::kElements);
  }
  void add(const Primitive& cyl);
  void get(std::size_t row, Primitive& cyl) const;
};

struct BoxColumns {
  using Primitive = Vesk::Box;
  static constexpr const char* kName = "boxes";
  ElementColumns element;
  Column<double> origin{{3}};
  Column<double> edge1{{3}};
  Column<double> edge2{{3}};
  Column<double> edge3{{3}};
  TagColumns marks;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("origin", origin, Rows::kElements);
    act("edge1", edge1, Rows::kElements);
    act("edge2", edge2, Rows::kElements);
    act("edge3", edge3, Rows::kElements);
    marks.each(act);
  }
  void add(const Primitive& box);
  void get(std::size_t row, Primitive& box) const;
};

struct RelbColumns {
  using Primitive = Vesk::Relb;
  static constexpr const char* kName = "elbows";
  ElementColumns element;
  Column<double> centre{{3}};
  Column<double> startVector{{3}};
  Column<double> endVector{{3}};
  Column<double> width;
  Column<double> depth;
  Column<std::uint8_t> flipped;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("centre", centre, Rows::kElements);
    act("start_vector", startVector, Rows::kElements);
    act("end_vector", endVector, Rows::kElements);
    act("width", width, Rows::kElements);
    act("depth", depth, Rows::kElements);
    act("flipped", flipped, Rows::kElements);
  }
  void add(const Primitive& elbow);
  void get(std::size_t row, Primitive& elbow) const;
};

struct TorusColumns {
  using Primitive = Vesk::Torus;
  static constexpr const char* kName = "tori";
  ElementColumns element;
  Column<double> centre{{3}};
  Column<double> startVector{{3}};
  Column<double> endVector{{3}};
  Column<double> diameter;
  Column<double> bendRadius;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("centre", centre, Rows::kElements);
    act("start_vector", startVector, Rows::kElements);
    act("end_vector", endVector, Rows::kElements);
    act("diameter", diameter, Rows::kElements);
    act("bend_radius", bendRadius, Rows::kElements);
  }
  void add(const Primitive& torus);
  void get(std::size_t row, Primitive& torus) const;
};

struct RedColumns {
  using Primitive = Vesk::Red;
  static constexpr const char* kName = "reducers";
  ElementColumns element;
  Column<double> origin{{3}};
  Column<double> cornerVectors{{7, 3}};
  TagColumns tags;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("origin", origin, Rows::kElements);
    act("corner_vectors", cornerVectors, Rows::kElements);
    tags.each(act);
  }
  void add(const Primitive& red);
  void get(std::size_t row, Primitive& red) const;
};

struct ConeColumns {
  using Primitive = Vesk::Cone;
  static constexpr const char* kName = "cones";
  ElementColumns element;
  Column<double> start{{3}};
  Column<double> axis{{3}};
  Column<double> diameter1;
  Column<double> diameter2;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("start", start, Rows::kElements);
    act("axis", axis, Rows::kElements);
    act("diameter1", diameter1, Rows::kElements);
    act("diameter2", diameter2, Rows::kElements);
  }
  void add(const Primitive& cone);
  void get(std::size_t row, Primitive& cone) const;
};

struct PlineColumns {
  using Primitive = Vesk::Pline;
  static constexpr const char* kName = "polylines";
  ElementColumns element;
  Column<std::int32_t> pointSize;
  Column<double> pointDirection{{3}};
  Column<std::int64_t> offsets = TagColumns::started();
  Column<double> points{{3}};
  ArcColumns arcs;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("point_size", pointSize, Rows::kElements);
    act("point_direction", pointDirection, Rows::kElements);
    act("offsets", offsets, Rows::kOffsets);
    act("points", points, Rows::kItems);
    arcs.each(act);
  }
  void add(const Primitive& pline);
  void get(std::size_t row, Primitive& pline) const;
};

struct PgonColumns {
  using Primitive = Vesk::Pgon;
  static constexpr const char* kName = "polygons";
  ElementColumns element;
  Column<std::int64_t> offsets = TagColumns::started();
  Column<double> points{{3}};
  Column<double> normals{{3}};
  Column<std::uint8_t> hasNormal;
  ArcColumns arcs;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("offsets", offsets, Rows::kOffsets);
    act("points", points, Rows::kItems);
    act("normals", normals, Rows::kItems);
    act("has_normal", hasNormal, Rows::kItems);
    arcs.each(act);
  }
  void add(const Primitive& pgon);
  void get(std::size_t row, Primitive& pgon) const;
};

struct TxtColumns {
  using Primitive = Vesk::Txt;
  static constexpr const char* kName = "texts";
  ElementColumns element;
  Column<double> position{{3}};
  Column<double> direction{{3}};
  Column<double> up{{3}};
  Column<double> charWidth;
  Column<double> height;
  Column<std::int32_t> alignment;
  Column<std::int32_t> flag;
  Column<std::int64_t> textOffsets = TagColumns::started();
  Column<std::uint8_t> textBytes;

  template <class Do>
  void each(Do&& act) {
    element.each(act);
    act("position", position, Rows::kElements);
    act("direction", direction, Rows::kElements);
    act("up", up, Rows::kElements);
    act("char_width", charWidth, Rows::kElements);
    act("height", height, Rows::kElements);
    act("alignment", alignment, Rows::kElements);
    act("flag", flag, Rows::kElements);
    act("text_offsets", textOffsets, Rows::kOffsets);
    act("text_bytes", textBytes, Rows::kItems);
  }
  void add(const Primitive& txt);
  void get(std::size_t row, Primitive& txt) const;
};

// In the order of the type codes.
using AllColumns = std::tuple<CylColumns, BoxColumns, RelbColumns, TorusColumns, RedColumns,
                              ConeColumns, PlineColumns, PgonColumns, TxtColumns>;

template <std::int32_t code>
using ColumnsOfCode = std::tuple_element_t<static_cast<std::size_t>(code) - 1, AllColumns>;

}  // namespace VeskPython

#endif

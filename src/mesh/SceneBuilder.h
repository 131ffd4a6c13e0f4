// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_SCENEBUILDER_H
#define VESK_MESH_SCENEBUILDER_H

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "mesh/MeshStore.h"
#include "mesh/Scene.h"
#include "vesk/Geo.h"
#include "vesk/mesh/Fineness.h"

namespace Vesk {

class Box;
class Cone;
class Cyl;
class Pgon;
class Pline;
class Red;
class Relb;
class Torus;
class Txt;

// Why an element that has a shape can't be made into triangles.
enum class SceneLimit { kNone, kTooFine, kBendTooFine, kReducerTooFine };

// Makes a scene of primitives, one after the other; none of them is kept.
//
//   SceneBuilder builder(Fineness::ofSegments(Fineness::kNormal));
//   const std::uint32_t file = builder.addFile("plant.dat");
//   builder.add(geo, {.kind = 1, .header = builder.headerId("P-1"), .file = file, .line = 12});
//   const Scene scene = builder.finish();
//
// Meshes by kind:
//
// * Cylinder and cone: a unit cone, stretched. Its frame follows from the axis and
//   is the same whichever end is first, so that pipes in line meet corner to corner.
// * Torus and elbow: of unit radius, by their sweep and proportion. Where the two
//   vectors differ in length the radius is their mean.
// * Box with right angles: the unit cube; any other has a mesh of its own.
// * Reducer: a face that is plane within a tenth of the tolerance is two triangles.
//   Any other becomes cells of four about their middles, which keep its volume,
//   as many as the tolerance asks for, and then every face has as many.
// * Polygon: open. Of the diagonals of a quadrangle the one that suits its normal.
//   Arc entries play no part, here and in polylines.
//
// What can't be a solid, a face, a line or a text becomes a failure with the reason.
class SceneBuilder {
 public:
  explicit SceneBuilder(const Fineness& fineness) : fineness_(fineness) {}

  std::uint32_t addFile(std::string name);

  // The same for the same text.
  std::uint32_t headerId(std::string_view header, std::string_view group = {});

  // Adds the element; its index. Throws std::bad_alloc alone.
  std::uint32_t add(const Geo& geo, const SceneElement& element);

  // The scene; the builder is as new then but for its fineness.
  Scene finish();

 private:
  // What is known of an instance but its mesh.
  struct Solid {
    Placement placement;
    double volume = 0.0;
    double deviation = 0.0;
    double tolerance = 0.0;
  };

  void fail(const char* reason);
  void addGeo(const Geo& geo);

  template <class Primitive>
  void addPrimitive(const Primitive& primitive);
  void addPrimitive(const Red& red);
  void addPrimitive(const Pgon& pgon);

  // These have a shape.
  SceneLimit add(const Cyl& cyl);
  SceneLimit add(const Cone& cone);
  SceneLimit add(const Box& box);
  SceneLimit add(const Torus& torus);
  SceneLimit add(const Relb& relb);
  SceneLimit add(const Pline& pline);
  SceneLimit add(const Txt& txt);
  SceneLimit addRound(const GePoint& origin, const GeVector& axis, double radius1, double radius2);

  void addReducer(const Red& red);
  void addFace(const Pgon& pgon);

  std::uint32_t element() const { return static_cast<std::uint32_t>(scene_.elements.size() - 1); }

  template <class Make>
  void addUnit(const MeshStore::UnitKey& key, const Solid& solid, Make make);
  void addOwn(Mesh mesh, const Solid& solid);
  void addInstance(std::uint32_t mesh, const Solid& solid);

  Fineness fineness_;
  Scene scene_;
  std::unordered_map<std::string, std::uint32_t> headers_;
  MeshStore meshes_;
};

}  // namespace Vesk

#endif

// SPDX-License-Identifier: MIT
#include "vesk/mesh/ElementMesh.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "mesh/MeshProof.h"
#include "vesk/Cyl.h"
#include "vesk/Pgon.h"
#include "vesk/Pline.h"
#include "vesk/Torus.h"
#include "vesk/Txt.h"

namespace VeskTest {
namespace {

using namespace Vesk;

const double kPi = std::acos(-1.0);

TEST(ElementMeshTest, ACylinderIsClosedAndWithinItsTolerance) {
  const ElementMesh made =
      meshOf(Cyl({10, 20, 30}, {10, 20, 130}, 40), Fineness::ofTolerance(0.01));
  EXPECT_EQ(made.reason, "");
  EXPECT_EQ(closureFault(made.mesh), "");
  EXPECT_DOUBLE_EQ(made.tolerance, 0.01);
  EXPECT_LE(made.deviation, 0.01);
  EXPECT_NEAR(made.volume, kPi * 20 * 20 * 100, 1e-6);
  // A prism in the cylinder: smaller, by less than a shell of the tolerance.
  const double enclosed = enclosedVolume(made.mesh);
  EXPECT_LT(enclosed, made.volume);
  EXPECT_GT(enclosed, made.volume - 2 * kPi * 20 * 100 * 0.01);
}

// Of radius 1 a circle has twelve pieces at this tolerance, for none is of more than 30 degrees:
// they are 1 - cos 15 degrees off, much less than they might be.
TEST(ElementMeshTest, ItTellsHowFarItIsOffAndHowFarItMightBe) {
  const ElementMesh made = meshOf(Cyl({0, 0, 0}, {0, 0, 5}, 2), Fineness::ofTolerance(0.1));
  EXPECT_NEAR(made.deviation, 1 - std::cos(kPi / 12), 1e-12);
  EXPECT_DOUBLE_EQ(made.tolerance, 0.1);
}

TEST(ElementMeshTest, ItStandsWhereTheElementStands) {
  const Cyl pipe({10, 20, 30}, {10, 20, 130}, 40);
  Extents box;
  for (const GePoint& p : meshOf(pipe, Fineness::ofSegments(8)).mesh.positions) box.add(p);
  EXPECT_NEAR(distance(box.min, {-10, 0, 30}), 0, 1e-12);
  EXPECT_NEAR(distance(box.max, {30, 40, 130}), 0, 1e-12);
}

TEST(ElementMeshTest, FarFromTheOriginToo) {
  const double far = 1e9;
  Extents box;
  const Cyl pipe({far, 0, 0}, {far, 0, 100}, 40);
  for (const GePoint& p : meshOf(pipe, Fineness::ofTolerance(0.01)).mesh.positions) box.add(p);
  EXPECT_NEAR(distance(box.min, {far - 20, -20, 0}), 0, 1e-6);
  EXPECT_NEAR(distance(box.max, {far + 20, 20, 100}), 0, 1e-6);
}

TEST(ElementMeshTest, NormalsAreOfUnitLength) {
  const Torus bend({0, 0, 0}, {300, 0, 0}, {0, 300, 0}, 100);
  for (const GeVector& n : meshOf(bend, Fineness::ofSegments(8)).mesh.normals) {
    EXPECT_NEAR(n.length(), 1, 1e-12);
  }
}

TEST(ElementMeshTest, APolygonIsOpen) {
  const ElementMesh made =
      meshOf(Pgon{GePoint(0, 0, 0), GePoint(9, 0, 0), GePoint(0, 9, 0)}, Fineness::ofSegments(8));
  EXPECT_FALSE(made.mesh.closed);
  EXPECT_EQ(made.mesh.triangles.size(), 1U);
  EXPECT_EQ(made.volume, 0.0);
}

TEST(ElementMeshTest, WhatHasNoSurfaceSaysWhy) {
  const Fineness fineness = Fineness::ofSegments(8);
  EXPECT_EQ(meshOf(Pline{{0, 0, 0}, {1, 0, 0}}, fineness).reason, "a polyline has no surface");
  EXPECT_EQ(meshOf(Pline{{0, 0, 0}}, fineness).reason, "a polyline has no surface");
  EXPECT_EQ(meshOf(Txt({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, 1, 2, 1, 0, "A"), fineness).reason,
            "a text has no surface");
  EXPECT_NE(meshOf(Cyl({0, 0, 0}, {0, 0, 10}, 0), fineness).reason, "");
}

}  // namespace
}  // namespace VeskTest

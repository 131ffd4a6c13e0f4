// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "examples/HostRun.h"

namespace {

// A box, an elbow, a reducer; a quadrangle, a triangle, a point; a cylinder, a torus,
// a cone, a segment; a text, which takes two lines. Vectors are the given points minus
// the first one. The elbow: axis from y -200 to 200, so its centre is at y 0 and its
// width 400; inner radius 200 and outer 500 make a mean radius of 350 and a depth of
// 300.
TEST(Elements, WritesEachOfTheElevenElementsOnce) {
  const HostFolder folder;
  const HostRun run = runHost(folder, ELEMENTS_PROGRAM, "");
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.out, "Written: veskelements.dat\n");
  const std::vector<std::string> expected = {
      "b 1000 0 0,1000 -200 350,0 400 0,0 0 300",
      "e 2000 0 850,0 0 -350,350 0 0,300,400",
      "r 2200 -200 850,300 0 0,0 400 0,300 400 0,50 100 400,250 100 400,50 300 400,250 300 400",
      "g pt 0 -400 0,pt 1000 0 0,pt 1000 800 0,pt 0 800 0",
      "g pt 0 0 0,pt -300 0 0,pt 0 0 300",
      "l pt 50 -350 0",
      "c 500 400 500,0 400 0,60.3",
      "t 500 800 576,0 0 -76,0 76 0,60.3",
      "n 500 876 576,0 0 76,60.3,48.3",
      "l pt 500 400 500,pt 0 400 0",
      "x 100 -400 300,1 0 0,0 0 1,50,30,1,19",
      "x AIR HANDLING UNIT 1",
  };
  EXPECT_EQ(recordsOf(folder.read("veskelements.dat")), expected);
}

TEST(Elements, SaysWhenTheFileCannotBeOpened) {
  const HostFolder folder;
  std::filesystem::create_directory(folder.path() / "veskelements.dat");
  const HostRun run = runHost(folder, ELEMENTS_PROGRAM, "");
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.err.find("veskelements.dat: "), std::string::npos) << run.err;
}

}  // namespace

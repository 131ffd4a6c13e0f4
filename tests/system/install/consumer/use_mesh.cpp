// SPDX-License-Identifier: MIT
#include <vesk/Cyl.h>
#include <vesk/mesh/ElementMesh.h>

// A cylinder of eight segments: two ends of six triangles, and sixteen round them.
int main() {
  const Vesk::Cyl pipe({0, 0, 0}, {0, 0, 10}, 5);
  const Vesk::ElementMesh made = Vesk::meshOf(pipe, Vesk::Fineness::ofSegments(8));
  const bool isWhole = made.mesh.closed && made.mesh.triangles.size() == 28;
  return isWhole && made.deviation <= made.tolerance ? 0 : 1;
}

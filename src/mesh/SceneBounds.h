// SPDX-License-Identifier: MIT
#ifndef VESK_MESH_SCENEBOUNDS_H
#define VESK_MESH_SCENEBOUNDS_H

#include "mesh/Scene.h"
#include "vesk/mesh/Fineness.h"

namespace Vesk {

// Sets the bounds of a scene: a box around all that it shows.
void findBounds(Scene& scene);

// Moves a scene that lies so far from the origin that floats lose a quarter of the
// tolerance next to it, by whole units, and keeps the offset. The tolerance that
// counts is that of the round shapes; of many the middle one. The bounds are known.
void moveFromAfar(Scene& scene, const Fineness& fineness);

}  // namespace Vesk

#endif

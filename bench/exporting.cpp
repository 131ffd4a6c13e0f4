// SPDX-License-Identifier: MIT
// From a record file to triangles: how long a mixed plant takes at normal quality,
// how many triangles come of it, and how many bytes.
//
//   exporting [ELEMENTS [ROUNDS]]     by custom 100,000 and 5
//
// The first row reads the file and makes the scene; the others write that scene
// besides, into a sink that counts. One core does it all.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Measure.h"
#include "PlantFile.h"
#include "export/Writers.h"
#include "files/SceneReader.h"
#include "mesh/Scene.h"
#include "terminal/Session.h"
#include "terminal/Streams.h"

namespace {

using namespace VeskBench;

class CountingSink : public VeskTool::TextSink {
 public:
  void write(std::string_view text) override { bytes += text.size(); }

  std::size_t bytes = 0;
};

Vesk::Scene sceneOf(const std::string& file) {
  const VeskTool::CommonOptions options;
  VeskTool::TextBuffer answer;
  VeskTool::TextBuffer messages;
  VeskTool::Progress progress("", VeskTool::Progress::Mode::kNever);
  VeskTool::Session session(options, answer, messages, progress);
  Vesk::Scene scene;
  VeskTool::readScene({file}, Vesk::Fineness::ofSegments(Vesk::Fineness::kNormal), session, scene);
  return scene;
}

std::size_t trianglesOf(const Vesk::Scene& scene) {
  std::size_t count = 0;
  for (const Vesk::SceneInstance& instance : scene.instances) {
    count += scene.meshes[instance.mesh].triangles.size();
  }
  return count;
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 100000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  const WorkFolder folder;
  const std::string file = writePlant(plantModel(count), count, 3);

  CountingSink glb;
  CountingSink obj;
  CountingSink stl;
  std::size_t triangles = 0;
  std::size_t meshes = 0;
  long scenePeak = 0;
  long glbPeak = 0;
  // The peak only grows: what needs least goes first.
  std::vector<Rival> rivals;
  rivals.push_back({"scene", [&] {
                      const Vesk::Scene scene = sceneOf(file);
                      triangles = trianglesOf(scene);
                      meshes = scene.meshes.size();
                      if (scenePeak == 0) scenePeak = peakMemory();
                    }});
  rivals.push_back({"stl", [&] {
                      stl.bytes = 0;
                      VeskTool::writeStl(sceneOf(file), stl);
                    }});
  rivals.push_back({"obj", [&] {
                      obj.bytes = 0;
                      VeskTool::writeObj(sceneOf(file), 1.0, obj);
                    }});
  rivals.push_back({"glb", [&] {
                      glb.bytes = 0;
                      VeskTool::writeGlb(sceneOf(file), 1.0, glb);
                      glbPeak = peakMemory();
                    }});
  runAll(rivals, count, rounds);

  std::printf("\n%zu elements, %zu triangles, %zu meshes\n\n", count, triangles, meshes);
  std::printf(
      "| | seconds | million triangles/s | MB | bytes an element |\n|---|---:|---:|---:|---:|\n");
  const std::size_t bytes[] = {0, stl.bytes, obj.bytes, glb.bytes};
  for (std::size_t i = 0; i < rivals.size(); ++i) {
    const double elements = static_cast<double>(count);
    const double seconds = rivals[i].middle() * elements / 1e9;
    std::printf("| %s | %.2f | %.1f | %.1f | %.0f |\n", rivals[i].name.c_str(), seconds,
                static_cast<double>(triangles) / seconds / 1e6, static_cast<double>(bytes[i]) / 1e6,
                static_cast<double>(bytes[i]) / elements);
  }
  std::printf("\npeak memory: %ld KiB with the scene, %ld KiB with glb\n", scenePeak, glbPeak);
}

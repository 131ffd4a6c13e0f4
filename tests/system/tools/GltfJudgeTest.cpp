// SPDX-License-Identifier: MIT
// A reader of glTF that is not ours.
#define TINYGLTF_IMPLEMENTATION
#define TINYGLTF_NO_STB_IMAGE
#define TINYGLTF_NO_STB_IMAGE_WRITE
#define TINYGLTF_NO_EXTERNAL_IMAGE
#include <gtest/gtest.h>
#include <tiny_gltf.h>

#include <fstream>
#include <string>

#include "support/TempFolder.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

struct JudgeCase {
  const char* name;
  const char* file;
  const char* options;
};

class GltfJudgeTest : public testing::TestWithParam<JudgeCase> {};

// A record begins with a line of the number "00".
std::size_t recordsIn(const std::string& file) {
  std::ifstream records(file);
  std::size_t count = 0;
  for (std::string line; std::getline(records, line);)
    count += line.substr(17, 2) == "00" ? 1U : 0U;
  return count;
}

// Each is told by a node, a range of triangles or an instance.
TEST_P(GltfJudgeTest, TinygltfFindsEveryElement) {
  const TempFolder folder;
  const std::string file = GetParam().file;
  ASSERT_EQ(runTool("export \"" + golden("pump.dat") + "\" -o " + file + GetParam().options).exit,
            0);
  tinygltf::TinyGLTF loader;
  tinygltf::Model model;
  std::string error;
  std::string warning;
  const bool isLoaded = file.ends_with("glb")
                            ? loader.LoadBinaryFromFile(&model, &error, &warning, file)
                            : loader.LoadASCIIFromFile(&model, &error, &warning, file);
  ASSERT_TRUE(isLoaded) << error;
  EXPECT_EQ(error + warning, "");
  std::size_t elements = 0;
  for (const tinygltf::Node& node : model.nodes) {
    const auto instances = node.extensions.find("EXT_mesh_gpu_instancing");
    if (instances != node.extensions.end()) {
      const int scale = instances->second.Get("attributes").Get("SCALE").Get<int>();
      elements += model.accessors[static_cast<std::size_t>(scale)].count;
    } else if (node.extras.Has("lines")) {
      elements += node.extras.Get("lines").ArrayLen();
    } else if (node.extras.Has("line")) {
      ++elements;
    }
  }
  EXPECT_EQ(elements, recordsIn(golden("pump.dat")));
}

INSTANTIATE_TEST_SUITE_P(Files, GltfJudgeTest,
                         testing::Values(JudgeCase{"Binary", "x.glb", ""},
                                         JudgeCase{"Text", "x.gltf", ""},
                                         JudgeCase{"Instances", "x.glb", " --instances"},
                                         JudgeCase{"Merged", "x.glb", " --merge"}),
                         [](const auto& each) { return std::string(each.param.name); });

void PrintTo(const JudgeCase& each, std::ostream* out) { *out << each.file << each.options; }

}  // namespace
}  // namespace VeskTest

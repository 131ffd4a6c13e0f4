// SPDX-License-Identifier: MIT
// Inputs that gzip or zstd packed.
#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <string>

#include "support/TempFolder.h"
#include "terminal/Libraries.h"
#include "tools/ToolRun.h"

namespace VeskTest {
namespace {

std::string gzip(const std::string& text) {
  z_stream stream{};
  constexpr int kOfGzip = 16;
  EXPECT_EQ(deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, MAX_WBITS + kOfGzip, 8,
                         Z_DEFAULT_STRATEGY),
            Z_OK);
  std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
  std::string copy = text;
  // NOLINTBEGIN: characters as bytes
  stream.next_in = reinterpret_cast<Bytef*>(copy.data());
  stream.avail_in = static_cast<uInt>(copy.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  // NOLINTEND
  stream.avail_out = static_cast<uInt>(packed.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

// A frame of zstd with one block as it is. Behind the mark: the size of the content
// in one byte follows (0x20), that byte, then in three bytes 8 * size + 1, which
// means the last block, unpacked.
std::string zstd(const std::string& text) {
  const std::size_t header = 8 * text.size() + 1;
  std::string packed = "\x28\xB5\x2F\xFD\x20";
  packed += static_cast<char>(text.size());
  packed += static_cast<char>(header % 256);
  packed += static_cast<char>(header / 256);
  packed += '\0';
  return packed + text;
}

bool hasZstd() {
  const auto all = VeskTool::libraries();
  return std::any_of(all.begin(), all.end(), [](const VeskTool::Library& each) {
    return std::string_view(each.name) == "zstd" && each.isIn;
  });
}

constexpr RunCase kGzip[] = {
    {"IsRead", "info one.gz", 0, "elements  1\n", ""},
    {"IsConverted", "convert one.gz -", 0, "c 0 0 0,0 0 1000,100\n", ""},
    {"TwoPackedFilesInOne", "info two.gz", 0, "elements  2\n", ""},
    {"ZerosBehindItAreNothing", "info padded.gz", 0, "elements  1\n", ""},
    {"AnEmptyFile", "info empty.gz", 0, "elements  0\n", ""},
    {"CutOff", "info cut.gz", 3, "", "cut.gz: cut off: the end of the packed bytes is missing"},
    {"Damaged", "info damaged.gz", 3, "", "damaged.gz: damaged: the gzip data"},
    {"TheOthersGoOn", "info cut.gz one.gz", 3, "one.gz\n", "cut.gz: cut off"},
    // 80 MB of zeros are some 80 KB: a thousand times less.
    {"ABombIsRefused", "info bomb.gz", 3, "",
     "bomb.gz: becomes more than 256 times its size when it is unpacked, which no plant does"},
};

class GzipTest : public testing::TestWithParam<RunCase> {};

TEST_P(GzipTest, Runs) {
  const TempFolder folder;
  const std::string one = gzip(kPipe);
  std::string damaged = one;
  damaged[damaged.size() - 6] ^= 1;  // of the checksum, which is followed by the size
  writeFile("one.gz", one);
  writeFile("two.gz", one + one);
  writeFile("padded.gz", one + std::string(100, '\0'));
  writeFile("empty.gz", gzip(""));
  writeFile("cut.gz", one.substr(0, one.size() - 9));
  writeFile("damaged.gz", damaged);
  if (contains(GetParam().arguments, "bomb")) {
    writeFile("bomb.gz", gzip(std::string(80'000'000, '\0')));
  }
  expectRun(GetParam());
}

TEST(Packed, ReadsThroughAPipe) {
  const TempFolder folder;
  const ToolRun run = runTool("info -", gzip(kPipe));
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_TRUE(contains(run.out, "elements  1\n")) << run.out;
}

// Lines and bytes are those of what was packed, whether or not the last line has an end.
TEST(Packed, CountsTheLinesInside) {
  const TempFolder folder;
  writeFile("whole.gz", gzip(kPipe + kPipe));
  writeFile("open.gz", gzip(kPipe + kPipe.substr(0, kPipe.size() - 1)));
  for (const char* name : {"whole.gz", "open.gz"}) {
    const ToolRun run = runTool(std::string("info ") + name);
    EXPECT_TRUE(contains(run.out, "  lines     2\n")) << name << run.out;
    const std::size_t size = 2 * kPipe.size() - (name[0] == 'o' ? 1 : 0);
    EXPECT_TRUE(contains(run.out, "  bytes     " + std::to_string(size) + '\n')) << run.out;
  }
}

INSTANTIATE_TEST_SUITE_P(Packed, GzipTest, testing::ValuesIn(kGzip),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Packed, ZstdIsReadOrNamed) {
  const TempFolder folder;
  writeFile("one.zst", zstd(kPipe));
  writeFile("cut.zst", zstd(kPipe).substr(0, 30));
  const ToolRun run = runTool("list one.zst");
  if (!hasZstd()) {
    EXPECT_EQ(run.exit, 2);
    EXPECT_TRUE(contains(run.err, "reading of .zst files needs zstd")) << run.err;
    return;
  }
  EXPECT_EQ(run.exit, 0) << run.err;
  EXPECT_TRUE(contains(run.out, "length 1000, diameter 100")) << run.out;
  const ToolRun cut = runTool("list cut.zst");
  EXPECT_EQ(cut.exit, 3);
  EXPECT_TRUE(contains(cut.err, "cut.zst: cut off")) << cut.err;
}

}  // namespace
}  // namespace VeskTest

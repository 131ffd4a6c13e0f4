// SPDX-License-Identifier: MIT
// writeCorpus FOLDER - writes small review models of both forms, a file for each kind
// of shape, from which the fuzzer begins.
#include <cstdio>
#include <fstream>
#include <string>

#include "rvm/ReviewWriter.h"

namespace {

using VeskTest::kUpright;
using VeskTest::Numbers;
using VeskTest::ReviewWriter;

constexpr ReviewWriter::Form kForms[] = {ReviewWriter::Form::kBinary, ReviewWriter::Form::kText};

void write(const std::string& path, char options, const std::string& bytes) {
  std::ofstream(path, std::ios::binary) << options << bytes;
}

void shapeOf(ReviewWriter& writer, std::uint32_t kind) {
  const Numbers box = {-50, -50, -50, 50, 50, 50};
  if (kind == 11) {
    writer.facets(kUpright, box,
                  {{{{0, 0, 0}, {90, 0, 0}, {90, 90, 0}, {0, 90, 0}},
                    {{20, 20, 0}, {20, 40, 0}, {40, 20, 0}}}});
    return;
  }
  const Numbers parameters[] = {{},
                                {100, 100, 50, 50, 10, 0, 100},
                                {100, 100, 100},
                                {10, 50, 100, 3},
                                {40, 10, 3},
                                {50, 20},
                                {50, 20},
                                {50, 20, 100, 5, 5, 0.1, 0, 0, 0.2},
                                {50, 100},
                                {100},
                                {-50, 50}};
  writer.shape(kind, kUpright, box, parameters[kind]);
}

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("writeCorpus FOLDER\n", stderr);
    return 2;
  }
  const std::string folder = std::string(words[1]) + '/';
  for (const ReviewWriter::Form form : kForms) {
    const std::string name = form == ReviewWriter::Form::kBinary ? "binary" : "text";
    for (std::uint32_t kind = 1; kind <= 11; ++kind) {
      ReviewWriter writer(form);
      writer.group("/A");
      writer.group("B");
      shapeOf(writer, kind);
      writer.end();
      writer.end();
      write(folder + name + std::to_string(kind), '\0', writer.finish());
    }
  }
  ReviewWriter writer(ReviewWriter::Form::kBinary);
  writer.colour();
  writer.transparent("OBST", true, 50, 8, kUpright, {0, 0, 0, 1, 1, 1}, {50, 100});
  writer.transparent("INSU", false, 50, 8, kUpright, {0, 0, 0, 1, 1, 1}, {50, 100});
  writer.chunk("NEWS", {1, 2, 3});
  write(folder + "transparent", '\3', writer.finish());
  write(
      folder + "attributes", '\4',
      "CADC_Attributes_File v1.0 , start: NEW , end: END , name_end: := , sep: &end&\n"
      "NEW Header Information\nSource:=x\nEND\nNEW /A\nSpec:= 'A1' &end& b:=c\nNEW B\nEND\nEND\n");
  return 0;
}

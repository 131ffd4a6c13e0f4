// SPDX-License-Identifier: MIT
// A number's text beside its rivals, on the numbers of a plant in their order.

#include <benchmark/benchmark.h>
#include <fmt/compile.h>
#include <fmt/format.h>

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "PlantModel.h"
#include "output/NumberText.h"
#include "plain/PlainText.h"

namespace {

constexpr int kDecimals = 6;

const std::vector<double>& numbers() {
  static const std::vector<double> list = VeskBench::plantNumbers(VeskBench::plantModel(20000));
  return list;
}

char* trim(char* end) {
  while (end[-1] == '0') --end;
  return end[-1] == '.' ? end - 1 : end;
}

// Runs write(to, v) for all numbers; the report is in nanoseconds a number.
template <class Write>
void run(benchmark::State& state, Write write) {
  std::vector<char> room(1000);
  std::int64_t count = 0;
  for (auto _ : state) {
    for (const double v : numbers()) benchmark::DoNotOptimize(write(room.data(), v));
    count += static_cast<std::int64_t>(numbers().size());
  }
  state.SetItemsProcessed(count);
}

void trimmedVesk(benchmark::State& state) {
  run(state, [](char* to, double v) { return Vesk::writeFixed(to, v, kDecimals); });
}
void trimmedPrintf(benchmark::State& state) {
  run(state,
      [](char* to, double v) { return trim(to + std::snprintf(to, 1000, "%.*f", kDecimals, v)); });
}
void trimmedToChars(benchmark::State& state) {
  run(state, [](char* to, double v) {
    return trim(std::to_chars(to, to + 1000, v, std::chars_format::fixed, kDecimals).ptr);
  });
}
void trimmedFmt(benchmark::State& state) {
  run(state, [](char* to, double v) { return trim(fmt::format_to(to, FMT_COMPILE("{:.6f}"), v)); });
}
void trimmedPlain(benchmark::State& state) {
  run(state, [](char*, double v) { return VeskBench::plainFixed(v, kDecimals).size(); });
}

void field9Vesk(benchmark::State& state) {
  run(state, [](char* to, double v) { return Vesk::writeField9(to, v); });
}
void field9Printf(benchmark::State& state) {
  run(state, [](char* to, double v) { return to + std::snprintf(to, 1000, "%9.*f", 3, v); });
}
void field9ToChars(benchmark::State& state) {
  run(state, [](char* to, double v) { return Vesk::Portable::writeField9(to, v); });
}
void field9Fmt(benchmark::State& state) {
  run(state, [](char* to, double v) { return fmt::format_to(to, FMT_COMPILE("{:9.3f}"), v); });
}
void field9Plain(benchmark::State& state) {
  run(state, [](char*, double v) { return VeskBench::plainField9(v).size(); });
}

}  // namespace

BENCHMARK(trimmedVesk);
BENCHMARK(trimmedPrintf);
BENCHMARK(trimmedToChars);
BENCHMARK(trimmedFmt);
BENCHMARK(trimmedPlain);
BENCHMARK(field9Vesk);
BENCHMARK(field9Printf);
BENCHMARK(field9ToChars);
BENCHMARK(field9Fmt);
BENCHMARK(field9Plain);
BENCHMARK_MAIN();

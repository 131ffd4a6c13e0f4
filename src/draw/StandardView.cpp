// SPDX-License-Identifier: MIT
#include "draw/StandardView.h"

namespace Vesk {
namespace {

constexpr double kRoot2 = 0.70710678118654752440;  // 1 / sqrt(2)
constexpr double kRoot3 = 0.57735026918962576451;  // 1 / sqrt(3)
constexpr double kRoot6 = 0.40824829046386301637;  // 1 / sqrt(6)

// clang-format off
constexpr StandardView kViews[] = {
    {"iso",    {kRoot2, kRoot2, 0}, {-kRoot6, kRoot6, 2 * kRoot6}, {kRoot3, -kRoot3, kRoot3}},
    {"top",    {1, 0, 0},           {0, 1, 0},                     {0, 0, 1}},
    {"bottom", {1, 0, 0},           {0, -1, 0},                    {0, 0, -1}},
    {"front",  {1, 0, 0},           {0, 0, 1},                     {0, -1, 0}},
    {"back",   {-1, 0, 0},          {0, 0, 1},                     {0, 1, 0}},
    {"left",   {0, -1, 0},          {0, 0, 1},                     {-1, 0, 0}},
    {"right",  {0, 1, 0},           {0, 0, 1},                     {1, 0, 0}},
};
// clang-format on

}  // namespace

std::span<const StandardView> standardViews() { return kViews; }

std::optional<StandardView> standardView(std::string_view name) {
  for (const StandardView& view : kViews) {
    if (view.name == name) return view;
  }
  return std::nullopt;
}

}  // namespace Vesk

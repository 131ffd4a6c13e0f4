// SPDX-License-Identifier: MIT
#include "rvm/ReviewModel.h"

#include "rvm/BinaryReview.h"
#include "rvm/ReviewFault.h"
#include "rvm/TextReview.h"
#include "rvm/WordStream.h"

namespace Vesk {
namespace {

struct KindRow {
  const char* name;
  std::size_t parameters;
};

constexpr KindRow kKinds[kReviewKinds] = {
    {"unknown kind", 0},
    {"pyramid", 7},
    {"box", 3},
    {"rectangular torus", 4},
    {"circular torus", 3},
    {"elliptical dish", 2},
    {"spherical dish", 2},
    {"snout", 9},
    {"cylinder", 2},
    {"sphere", 1},
    {"line", 2},
    {"facets", 0},
};

const KindRow& rowOf(ReviewKind kind) {
  const auto index = static_cast<std::size_t>(kind);
  return kKinds[index < kReviewKinds ? index : 0];
}

}  // namespace

const char* nameOf(ReviewKind kind) { return rowOf(kind).name; }

std::size_t parameterCount(ReviewKind kind) { return rowOf(kind).parameters; }

void readReview(const ReadBytes& bytes, ReviewHandler& handler) {
  WordStream stream(bytes);
  if (isBinaryReview(stream)) {
    readBinaryReview(stream, handler);
  } else if (isTextReview(stream)) {
    readTextReview(stream, handler);
  } else {
    throw ReviewFault(0, false, "this is not a review model: it doesn't begin with HEAD");
  }
}

}  // namespace Vesk

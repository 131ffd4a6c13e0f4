// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_BINARYREVIEW_H
#define VESK_RVM_BINARYREVIEW_H

#include "rvm/ReviewModel.h"
#include "rvm/WordStream.h"

namespace Vesk {

// The binary form: big-endian words of 32 bits in chunks, each of which says
// where the next one begins.
//
//   H E A D  next  1  version ...      a letter is a word

// Whether the file begins with four words that are the letters of HEAD.
bool isBinaryReview(WordStream& stream);

// See readReview.
void readBinaryReview(WordStream& stream, ReviewHandler& handler);

}  // namespace Vesk

#endif

// SPDX-License-Identifier: MIT
#ifndef VESK_RVM_TEXTREVIEW_H
#define VESK_RVM_TEXTREVIEW_H

#include "rvm/ReviewModel.h"
#include "rvm/WordStream.h"

namespace Vesk {

// The text form: the name of a chunk on a line, a line of two numbers, the body.
// Names and other texts have lines of their own; numbers may go on over line ends.
// A matrix stands in three rows of four, so that the axes are columns.
//
// The five decimals that such a file has leave two digits of an axis: axes are
// repaired; see repairAxes.

// Whether the file begins with HEAD on a line, after a byte order mark or blanks.
bool isTextReview(WordStream& stream);

// See readReview.
void readTextReview(WordStream& stream, ReviewHandler& handler);

}  // namespace Vesk

#endif

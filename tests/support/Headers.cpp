// SPDX-License-Identifier: MIT
//
// Nothing but the headers that most tests begin with, read once for all of them.

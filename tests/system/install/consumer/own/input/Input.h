// SPDX-License-Identifier: MIT
#ifndef HOST_INPUT_H
#define HOST_INPUT_H

// A host's own, with a name of the library's.
class Input {
 public:
  int keys() const { return 104; }
};

#endif

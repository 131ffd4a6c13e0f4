// SPDX-License-Identifier: MIT
#ifndef VESK_TESTS_SUPPORT_FAILINGALLOCATION_H
#define VESK_TESTS_SUPPORT_FAILINGALLOCATION_H

namespace VeskTest {

// Which allocations fail beside the one with the number.
enum class Failing { kOnce, kFromThenOn };

// While the object lives, the allocation with this number (the first one is 1)
// throws std::bad_alloc, and maybe all that come after it; the others succeed.
// One at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(int number, Failing failing = Failing::kOnce);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  // Whether that many allocations were asked for.
  bool happened() const;
};

// How many allocations of the program have not been freed.
long liveAllocations();

}  // namespace VeskTest

#endif

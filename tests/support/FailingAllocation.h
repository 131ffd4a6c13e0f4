#ifndef VESK_TESTS_SUPPORT_FAILINGALLOCATION_H
#define VESK_TESTS_SUPPORT_FAILINGALLOCATION_H

namespace VeskTest {

// While the object lives, the allocation with this number (the first one is 1)
// throws std::bad_alloc; the others succeed. One at a time.
class FailingAllocation {
 public:
  explicit FailingAllocation(int number);
  ~FailingAllocation();
  FailingAllocation(const FailingAllocation&) = delete;
  FailingAllocation& operator=(const FailingAllocation&) = delete;

  // Whether that many allocations were asked for.
  bool happened() const;
};

}  // namespace VeskTest

#endif

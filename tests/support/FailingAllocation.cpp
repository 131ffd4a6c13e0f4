#include "support/FailingAllocation.h"

#include <cstdlib>
#include <new>

namespace {

// Allocations until the one that fails; 0 while none is to fail.
int countdown = 0;
bool failed = false;

void* allocate(std::size_t size) {
  if (countdown > 0 && --countdown == 0) {
    failed = true;
    throw std::bad_alloc();
  }
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

// The whole test program allocates through these.
void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace VeskTest {

FailingAllocation::FailingAllocation(int number) {
  failed = false;
  countdown = number;
}

FailingAllocation::~FailingAllocation() { countdown = 0; }

bool FailingAllocation::happened() const { return failed; }

}  // namespace VeskTest

// SPDX-License-Identifier: MIT
#include "support/FailingAllocation.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// Allocations until the one that fails; 0 while none is to fail.
int countdown = 0;
bool failed = false;
bool fromThenOn = false;
std::atomic<long> live = 0;

void* allocate(std::size_t size) {
  if (countdown > 0 && --countdown == 0) {
    failed = true;
    if (fromThenOn) countdown = 1;
    throw std::bad_alloc();
  }
  void* memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) throw std::bad_alloc();
  ++live;
  return memory;
}

void release(void* memory) {
  if (memory != nullptr) --live;
  std::free(memory);
}

void* allocateOrNull(std::size_t size) noexcept {
  try {
    return allocate(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

}  // namespace

// The whole test program allocates through these. The standard library's own
// forms without exceptions would come here too, but not those that sanitizers
// and valgrind put in their place.
void* operator new(std::size_t size) { return allocate(size); }
void* operator new[](std::size_t size) { return allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocateOrNull(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocateOrNull(size);
}
void operator delete(void* memory) noexcept { release(memory); }
void operator delete[](void* memory) noexcept { release(memory); }
void operator delete(void* memory, std::size_t) noexcept { release(memory); }
void operator delete[](void* memory, std::size_t) noexcept { release(memory); }

namespace VeskTest {

FailingAllocation::FailingAllocation(int number, Failing failing) {
  failed = false;
  fromThenOn = failing == Failing::kFromThenOn;
  countdown = number;
}

FailingAllocation::~FailingAllocation() { countdown = 0; }

bool FailingAllocation::happened() const { return failed; }

long liveAllocations() { return live; }

}  // namespace VeskTest

// SPDX-License-Identifier: MIT
// The main of the test programs on Windows.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>

namespace {

constexpr UINT kCrashed = 124;

// Without a filter the process may end with code 0 under Wine, as if nothing
// had happened.
LONG WINAPI endWithOwnCode(EXCEPTION_POINTERS* exception) {
  std::fprintf(stderr, "unhandled exception %lx\n", exception->ExceptionRecord->ExceptionCode);
  std::fflush(nullptr);
  TerminateProcess(GetCurrentProcess(), kCrashed);
  return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

int main(int argc, char** argv) {
  SetUnhandledExceptionFilter(endWithOwnCode);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}

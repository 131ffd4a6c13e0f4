// SPDX-License-Identifier: MIT
#include "tools/StartedTool.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "terminal/Terminal.h"

namespace VeskTest {

StartedTool::StartedTool(const std::string& arguments, HANDLE input, HANDLE output, HANDLE errors) {
  for (const HANDLE handle : {input, output, errors}) {
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  }
  STARTUPINFOW start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = input;
  start.hStdOutput = output;
  start.hStdError = errors;
  std::wstring words = VeskTool::pathOf("\"" VESK_TOOL "\" " + arguments).native();
  EXPECT_NE(CreateProcessW(nullptr, words.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                           &start, &process_),
            0)
      << GetLastError();
}

StartedTool::~StartedTool() {
  CloseHandle(process_.hProcess);
  CloseHandle(process_.hThread);
}

int StartedTool::exitCode() const {
  constexpr DWORD kPatience = 60000;
  EXPECT_EQ(WaitForSingleObject(process_.hProcess, kPatience), WAIT_OBJECT_0);
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  return static_cast<int>(code);
}

HANDLE openForTool(const char* name, bool isInput) {
  return CreateFileA(name, isInput ? GENERIC_READ : GENERIC_WRITE,
                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                     isInput ? OPEN_EXISTING : CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace VeskTest

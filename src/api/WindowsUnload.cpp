// SPDX-License-Identifier: MIT
// Only in the DLL, which carries a C++ runtime of its own.
#ifdef _WIN32

namespace __gnu_cxx {
// libstdc++'s: gives back the memory that it sets aside for exceptions when it
// starts. It leaves that to the end of the process, which here comes too late.
void __freeres();
}  // namespace __gnu_cxx

namespace {

// Runs after the destructors of the global objects. Without it every load and
// unload of the DLL would cost the host 73 KiB.
[[gnu::destructor]] void freeRuntime() { __gnu_cxx::__freeres(); }

}  // namespace

#endif

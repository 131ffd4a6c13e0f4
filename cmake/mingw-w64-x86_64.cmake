# SPDX-License-Identifier: MIT
# Cross-builds for 64-bit Windows with MinGW-w64, and runs what was built under
# Wine with a prefix of its own in the build folder.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

# The posix compilers: the others lack std::thread and std::mutex, which
# GoogleTest needs.
set(VESK_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${VESK_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VESK_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${VESK_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${VESK_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/under-wine ${CMAKE_BINARY_DIR}/wine)

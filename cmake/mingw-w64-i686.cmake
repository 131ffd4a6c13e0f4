# SPDX-License-Identifier: MIT
# Cross-builds for 32-bit Windows with MinGW-w64. What was built can't be run on the
# machine that builds it, where Wine for 32 bits would need another architecture:
# tests/system/bare/check32 runs it elsewhere.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)

set(VESK_MINGW i686-w64-mingw32)
set(CMAKE_C_COMPILER ${VESK_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VESK_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${VESK_MINGW}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${VESK_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

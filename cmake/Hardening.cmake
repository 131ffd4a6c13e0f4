# SPDX-License-Identifier: MIT
# For the folders of what is shipped: it ends at a stack that was overrun, is ready for processors
# that check jumps and returns, and lets nobody write to the loader's tables. The builds that are
# for tests alone have assertions and sanitizers, which find more.
#
# With VESK_FORTIFY, copies of the folder are checked by the C library.
if(NOT VESK_HARDEN OR MSVC OR VESK_SANITIZE OR VESK_COVERAGE)
  return()
endif()
set(shipped $<NOT:$<CONFIG:Debug>>)
if(MINGW)
  # No stack protector: its runtime would need another of the system's libraries.
  add_link_options(-Wl,--dynamicbase,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    add_link_options(-Wl,--high-entropy-va)
  endif()
elseif(UNIX AND NOT APPLE)
  add_compile_options($<${shipped}:-fstack-protector-strong>)
  if(VESK_FORTIFY)
    set(level 2)
    if(CMAKE_CXX_COMPILER_ID STREQUAL Clang OR CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 12)
      set(level 3)  # those, too, whose size is known when they run
    endif()
    add_compile_options($<${shipped}:-U_FORTIFY_SOURCE> $<${shipped}:-D_FORTIFY_SOURCE=${level}>)
  endif()
  include(CheckCXXCompilerFlag)
  check_cxx_compiler_flag(-fcf-protection=full VESK_HAS_CF_PROTECTION)
  if(VESK_HAS_CF_PROTECTION)
    add_compile_options($<${shipped}:-fcf-protection=full>)
  endif()
  add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()

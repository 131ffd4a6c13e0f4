# SPDX-License-Identifier: MIT
# Flags for what is built here; none of them reaches a user of the library.
add_library(vesk_build_flags INTERFACE)

# Without contraction the same numbers give the same bytes with every compiler
# and at every level of optimisation.
if(MSVC)
  target_compile_options(vesk_build_flags INTERFACE /fp:precise /utf-8 /permissive-)
else()
  target_compile_options(vesk_build_flags INTERFACE -ffp-contract=off)
endif()

# In another's build its own warnings are enough, which it may have made errors.
if(PROJECT_IS_TOP_LEVEL)
  if(MSVC)
    target_compile_options(vesk_build_flags INTERFACE /W4 $<$<BOOL:${VESK_WERROR}>:/WX>)
  else()
    target_compile_options(vesk_build_flags INTERFACE
      -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
      $<$<BOOL:${VESK_WERROR}>:-Werror>
      $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual
      -Wcast-qual -Wformat=2>)
  endif()
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # At -O3 it takes copies inside its own std::string for overlapping ones.
  target_compile_options(vesk_build_flags INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL Clang AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 17)
  # It sees what older ones take for the library's own: the standard library's stable_sort
  # calls a function that the same library calls deprecated.
  target_compile_options(vesk_build_flags INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wno-deprecated-declarations>)
endif()
target_compile_definitions(vesk_build_flags INTERFACE $<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

if(MINGW)
  # Programs carry the compiler's runtime, so that they start anywhere.
  target_link_options(vesk_build_flags INTERFACE -static)
  # In C its isfinite and the like are macros that convert to float.
  target_compile_options(vesk_build_flags INTERFACE $<$<COMPILE_LANGUAGE:C>:-Wno-float-conversion>)
endif()

if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86")
  # The x87 unit keeps more digits than a double has. What SSE puts on the stack is
  # aligned, which callers for 32 bits need not do.
  target_compile_options(vesk_build_flags INTERFACE -msse2 -mfpmath=sse -mstackrealign)
endif()

if(VESK_SANITIZE)
  target_compile_options(vesk_build_flags INTERFACE -fsanitize=${VESK_SANITIZE}
    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(vesk_build_flags INTERFACE -fsanitize=${VESK_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # A program in C that uses a library in C++ has to bring the latter's checks.
    target_link_options(vesk_build_flags INTERFACE
      $<$<LINK_LANGUAGE:C>:-fsanitize-link-c++-runtime>)
    target_link_libraries(vesk_build_flags INTERFACE $<$<LINK_LANGUAGE:C>:stdc++>)
  endif()
endif()

if(VESK_COVERAGE)
  target_compile_options(vesk_build_flags INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(vesk_build_flags INTERFACE --coverage)
endif()

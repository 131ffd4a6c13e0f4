# SPDX-License-Identifier: MIT
include(GoogleTest)

# vesk_add_tests(PROGRAM [ENVIRONMENT NAME=VALUE]): makes the tests of a program
# known to CTest, each on its own. Under Wine, whose every start takes longer than
# most tests, and where lines are counted, which every program adds up at its end,
# the program runs in two parts that share its tests out.
function(vesk_add_tests program)
  cmake_parse_arguments(tests "" "ENVIRONMENT" "" ${ARGN})
  if(NOT CMAKE_CROSSCOMPILING AND NOT VESK_COVERAGE)
    gtest_discover_tests(${program} PROPERTIES ENVIRONMENT "${tests_ENVIRONMENT}")
  else()
    foreach(part RANGE 1)
      add_test(NAME ${program}.${part} COMMAND ${program})
      # On one core each, where threads don't wait for each other's counts.
      set_tests_properties(${program}.${part} PROPERTIES TIMEOUT 900 PROCESSOR_AFFINITY ON
        ENVIRONMENT "GTEST_TOTAL_SHARDS=2;GTEST_SHARD_INDEX=${part};${tests_ENVIRONMENT}")
    endforeach()
  endif()
  if(VESK_PRECOMPILE)
    target_precompile_headers(${program} REUSE_FROM vesk_test_headers)
    # Gcc forgets then that these are headers of the system, and warns that a text in them
    # might be longer than memory.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${program} PRIVATE -Wno-array-bounds -Wno-stringop-overflow)
    endif()
  endif()
endfunction()

# GTest::gtest and GTest::gtest_main: the installed ones, or, for Windows, built
# from the sources that Debian's package googletest installs.
if(NOT CMAKE_CROSSCOMPILING)
  find_package(GTest QUIET)
  return()
endif()

set(VESK_GTEST_SOURCE /usr/src/googletest/googletest CACHE PATH "GoogleTest's sources")
find_file(VESK_GTEST_ALL src/gtest-all.cc HINTS ${VESK_GTEST_SOURCE}
  REQUIRED NO_CMAKE_FIND_ROOT_PATH)
add_library(vesk_gtest STATIC ${VESK_GTEST_ALL})
target_include_directories(vesk_gtest PRIVATE ${VESK_GTEST_SOURCE})
target_include_directories(vesk_gtest SYSTEM INTERFACE ${VESK_GTEST_SOURCE}/include)
target_include_directories(vesk_gtest SYSTEM PRIVATE ${VESK_GTEST_SOURCE}/include)
add_library(GTest::gtest ALIAS vesk_gtest)

add_library(vesk_gtest_main STATIC ${PROJECT_SOURCE_DIR}/tests/support/WindowsTestMain.cpp)
target_link_libraries(vesk_gtest_main PUBLIC vesk_gtest PRIVATE vesk_build_flags)
add_library(GTest::gtest_main ALIAS vesk_gtest_main)

# What a test program holds is asked when the tests run, so that all can be built
# where Wine is missing; the prefix is made now, which takes longer than the
# asking may.
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
execute_process(COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} --start RESULT_VARIABLE started)
if(NOT started EQUAL 0)
  message(WARNING "Wine does not start: the Windows programs are built and can't be tested")
endif()

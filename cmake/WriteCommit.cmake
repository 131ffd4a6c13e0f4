# SPDX-License-Identifier: MIT
# Writes the commit of SOURCE as a string of C++ to FILE, if it is not there already.
#
#   cmake -DSOURCE=folder -DFILE=file -P WriteCommit.cmake
set(commit "")
find_program(git git)
if(git AND EXISTS ${SOURCE}/.git)
  execute_process(COMMAND ${git} -C ${SOURCE} rev-parse HEAD
    OUTPUT_VARIABLE commit OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
set(before "none")
if(EXISTS ${FILE})
  file(READ ${FILE} before)
endif()
if(NOT before STREQUAL "\"${commit}\"\n")
  file(WRITE ${FILE} "\"${commit}\"\n")
endif()

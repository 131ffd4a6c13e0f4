# SPDX-License-Identifier: MIT
# Runs a host in an empty folder; fails unless it ends with 0 and, where EXPECTED
# is given, leaves a file OUTPUT of the same bytes (on Windows but for the
# line ends).
#
#   cmake "-DHOST=[emulator;]program[;argument]" -DFOLDER=folder [-DOUTPUT=name -DEXPECTED=file] -P RunHost.cmake
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${HOST} WORKING_DIRECTORY ${FOLDER} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${HOST} ended with ${result}")
endif()
if(DEFINED EXPECTED)
  if(HOST MATCHES "\\.exe(;|$)")
    set(line_ends --ignore-eol)
  endif()
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E compare_files ${line_ends} ${FOLDER}/${OUTPUT} ${EXPECTED}
    RESULT_VARIABLE result)
  if(NOT result EQUAL 0)
    file(READ ${FOLDER}/${OUTPUT} text)
    message(FATAL_ERROR "${FOLDER}/${OUTPUT} differs from ${EXPECTED}:\n${text}")
  endif()
endif()

# SPDX-License-Identifier: MIT
# Runs a program in an empty folder; fails unless it ends with 0 and prints what
# OUTPUT says as its last line, or the text of the file EXPECTED and no other.
#
#   cmake "-DCOMMAND=[emulator;]program;arguments" -DFOLDER=folder
#         [-DOUTPUT=line] [-DEXPECTED=file] [-DLEFT=name] [-DLINES=count] -P runCase.cmake
#
# LEFT is a record file that the program leaves behind, with so many lines.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${COMMAND} WORKING_DIRECTORY ${FOLDER}
  RESULT_VARIABLE result OUTPUT_VARIABLE printed ERROR_VARIABLE errors)
string(REPLACE "\r\n" "\n" printed "${printed}")
message("${printed}${errors}")
if(NOT result EQUAL 0)
  message(FATAL_ERROR "it ended with ${result}")
endif()
if(OUTPUT AND NOT printed MATCHES "(^|\n)${OUTPUT}\n$")
  message(FATAL_ERROR "it did not print '${OUTPUT}' at its end")
endif()
if(EXPECTED)
  file(READ ${EXPECTED} expected)
  if(NOT printed STREQUAL expected)
    message(FATAL_ERROR "it did not print\n${expected}")
  endif()
endif()
if(LEFT)
  file(READ ${FOLDER}/${LEFT} text)
  string(REGEX MATCHALL "[^\n]*\n" lines "${text}")
  list(LENGTH lines count)
  string(LENGTH "${text}" size)
  list(JOIN lines "" whole)
  string(LENGTH "${whole}" complete)
  if(NOT count EQUAL LINES OR NOT size EQUAL complete)
    message(FATAL_ERROR "${LEFT} has ${count} lines, not ${LINES}:\n${text}")
  endif()
endif()

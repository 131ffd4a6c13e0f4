# SPDX-License-Identifier: MIT
# Runs PROGRAM in FOLDER, emptied before, and compares what it writes with RECORD.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${PROGRAM} WORKING_DIRECTORY ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
file(READ ${FOLDER}/veskpump.dat written)
string(REPLACE "\r\n" "\n" written "${written}")
file(READ ${RECORD} shown)
if(NOT written STREQUAL shown)
  message("README.md shows\n${shown}but its program writes\n${written}")
  message(FATAL_ERROR "they differ")
endif()

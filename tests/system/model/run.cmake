# SPDX-License-Identifier: MIT
# Runs PROGRAMS in FOLDER, emptied before, and compares what they print, or write
# to turned.dat, with the texts in SHOWN.
file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})

foreach(program IN LISTS PROGRAMS)
  execute_process(COMMAND ${EMULATOR} ${program} WORKING_DIRECTORY ${FOLDER}
    OUTPUT_VARIABLE done COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE ".*model_([a-z]+).*" "\\1" name ${program})
  if(name STREQUAL "write")
    continue()
  endif()
  if(name STREQUAL "turn")
    file(READ ${FOLDER}/turned.dat done)
  endif()
  string(REPLACE "\r\n" "\n" done "${done}")
  file(READ ${SHOWN}/${name}.txt shown)
  if(NOT done STREQUAL shown)
    message("docs/model.md shows\n${shown}but ${name}.cpp does\n${done}")
    message(FATAL_ERROR "they differ")
  endif()
endforeach()

# SPDX-License-Identifier: MIT
# Fails if a library takes a function of a list from elsewhere.
#
#   cmake -DNM=nm -DLIBRARY=libCVeskDll.so -DLIST=forbidden.txt -P CheckImports.cmake
#
# A line of the list is a regular expression for a whole symbol without its
# version; lines that begin with # are not.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} -D --undefined-only ${LIBRARY}
  OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${NM} could not read ${LIBRARY}: ${result}")
endif()
string(REGEX MATCHALL "[^ \n]+\n" found "${symbols}")
list(TRANSFORM found STRIP)
list(TRANSFORM found REPLACE "@.*" "")
if(NOT "fopen" IN_LIST found AND NOT "fopen64" IN_LIST found)
  message(FATAL_ERROR "${LIBRARY} imports no fopen; is the list of its symbols whole?\n${symbols}")
endif()
file(STRINGS ${LIST} forbidden REGEX "^[^#]")
set(failed FALSE)
foreach(symbol IN LISTS found)
  foreach(pattern IN LISTS forbidden)
    if("${symbol}" MATCHES "^(${pattern})$")
      message("imported: ${symbol} (${pattern})")
      set(failed TRUE)
    endif()
  endforeach()
endforeach()
if(failed)
  message(FATAL_ERROR "${LIBRARY} imports what ${LIST} forbids")
endif()

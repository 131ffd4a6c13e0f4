# SPDX-License-Identifier: MIT
# Fails unless the dynamic symbols that a library defines are those of a list.
#
#   cmake -DNM=nm -DLIBRARY=libCVeskDll.so -DLIST=exports.txt -P CompareExports.cmake
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} -D --defined-only ${LIBRARY}
  OUTPUT_VARIABLE symbols RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${NM} could not read ${LIBRARY}: ${result}")
endif()
string(REGEX MATCHALL "[^ \n]+\n" found "${symbols}")
list(TRANSFORM found STRIP)
list(SORT found)
file(STRINGS ${LIST} expected)
list(SORT expected)
if("${found}" STREQUAL "${expected}")
  return()
endif()
foreach(name IN LISTS found)
  if(NOT name IN_LIST expected)
    message("exported but not listed: ${name}")
  endif()
endforeach()
foreach(name IN LISTS expected)
  if(NOT name IN_LIST found)
    message("listed but not exported: ${name}")
  endif()
endforeach()
message(FATAL_ERROR "${LIBRARY} does not export what ${LIST} lists")

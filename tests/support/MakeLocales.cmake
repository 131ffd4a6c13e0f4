# SPDX-License-Identifier: MIT
# Makes private copies of locales in FOLDER, for LOCPATH; those that are there
# already stay.
#
#   cmake -DFOLDER=folder "-DLOCALES=de_DE.UTF-8;ps_AF.UTF-8" -P MakeLocales.cmake
cmake_minimum_required(VERSION 3.25)

find_program(localedef localedef)
if(NOT localedef)
  message(FATAL_ERROR "localedef is missing; on Debian it is in the package libc-bin")
endif()
file(MAKE_DIRECTORY ${FOLDER})
foreach(locale IN LISTS LOCALES)
  string(REGEX MATCH "^([^.]+)\\.(.+)$" whole ${locale})
  if(EXISTS ${FOLDER}/${locale}/LC_NUMERIC)
    continue()
  endif()
  # -c: a warning about the source does not keep the locale from being made.
  execute_process(
    COMMAND ${localedef} -c -i ${CMAKE_MATCH_1} -f ${CMAKE_MATCH_2} ${FOLDER}/${locale}
    OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT EXISTS ${FOLDER}/${locale}/LC_NUMERIC)
    message(FATAL_ERROR "the locale ${locale} could not be made; on Debian its source is in the "
      "package locales\n${output}")
  endif()
endforeach()

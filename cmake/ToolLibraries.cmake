# SPDX-License-Identifier: MIT
# What the tool is built on besides the project's own code, each library by one
# call. The table of all of them is what `vesk version` shows.
#
#   vesk_tool_library(NAME name PACKAGE package LICENCE spdx FOR purpose
#                     HEADER header [LIBRARY library [LOADED]] [OPTIONAL])
#
#   NAME      as people know it; lower case, it names the target vesk_with_NAME
#   PACKAGE   Debian's package that brings it
#   FOR       what needs it: "vesk NAME ... needs it" is a sentence with it
#   LOADED    not linked: it is opened when it is needed, by the name that its users
#             get as VESK_NAME_FILE (upper case)
#   OPTIONAL  the tool is built without it where it is missing, and says so when
#             it is needed; the variable VESK_HAS_NAME (upper case) tells, and a source
#             that has to know gets it by set_source_files_properties
#
# Sets VESK_MISSING_LIBRARIES to the packages of what is missing and not optional.
set(vesk_library_rows "")

function(vesk_tool_library)
  cmake_parse_arguments(PARSE_ARGV 0 arg "OPTIONAL;LOADED" "NAME;PACKAGE;LICENCE;FOR;HEADER;LIBRARY" "")
  string(TOLOWER ${arg_NAME} lower)
  string(MAKE_C_IDENTIFIER ${lower} lower)
  string(TOUPPER ${lower} upper)
  set(header_only TRUE)
  set(root NO_CMAKE_FIND_ROOT_PATH)
  if(arg_LIBRARY)
    set(header_only FALSE)
    set(root "")
  endif()
  find_path(VESK_${upper}_HEADER ${arg_HEADER} ${root})
  set(found ${VESK_${upper}_HEADER})
  if(NOT header_only AND found)
    find_library(VESK_${upper}_LIBRARY ${arg_LIBRARY})
    set(found ${VESK_${upper}_LIBRARY})
  endif()

  add_library(vesk_with_${lower} INTERFACE)
  if(found)
    set(has 1)
    if(header_only AND CMAKE_CROSSCOMPILING)
      # By itself: beside it lie the headers of the system that builds.
      set(links ${CMAKE_BINARY_DIR}/headers)
      string(REGEX REPLACE "/.*" "" top ${arg_HEADER})
      file(MAKE_DIRECTORY ${links})
      file(CREATE_LINK ${VESK_${upper}_HEADER}/${top} ${links}/${top} SYMBOLIC)
      target_include_directories(vesk_with_${lower} SYSTEM INTERFACE ${links})
    else()
      target_include_directories(vesk_with_${lower} SYSTEM INTERFACE ${VESK_${upper}_HEADER})
    endif()
    if(arg_LOADED)
      get_filename_component(file ${VESK_${upper}_LIBRARY} REALPATH)
      get_filename_component(file ${file} NAME)
      target_compile_definitions(vesk_with_${lower} INTERFACE VESK_${upper}_FILE="${file}")
      target_link_libraries(vesk_with_${lower} INTERFACE ${CMAKE_DL_LIBS})
    elseif(NOT header_only)
      target_link_libraries(vesk_with_${lower} INTERFACE ${VESK_${upper}_LIBRARY})
    endif()
  else()
    set(has 0)
    if(arg_OPTIONAL)
      message(STATUS "Left out of the tool: ${arg_FOR} (${arg_PACKAGE} is missing)")
    else()
      set(VESK_MISSING_LIBRARIES ${VESK_MISSING_LIBRARIES} ${arg_PACKAGE} PARENT_SCOPE)
    endif()
  endif()
  set(VESK_HAS_${upper} ${has} PARENT_SCOPE)
  set(vesk_library_rows "${vesk_library_rows}{\"${arg_NAME}\", \"${arg_PACKAGE}\", \"${arg_LICENCE}\", \"${arg_FOR}\", ${has} == 1},\n"
    PARENT_SCOPE)
endfunction()

# A row for what is built into the tool by other means.
#
#   vesk_bundled_library(NAME name PACKAGE package LICENCE spdx FOR purpose)
function(vesk_bundled_library)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "NAME;PACKAGE;LICENCE;FOR" "")
  set(vesk_library_rows "${vesk_library_rows}{\"${arg_NAME}\", \"${arg_PACKAGE}\", \"${arg_LICENCE}\", \"${arg_FOR}\", true},\n"
    PARENT_SCOPE)
endfunction()

# Writes the table for terminal/Libraries.cpp.
function(vesk_write_library_table file)
  file(CONFIGURE OUTPUT ${file} CONTENT "${vesk_library_rows}" @ONLY)
endfunction()

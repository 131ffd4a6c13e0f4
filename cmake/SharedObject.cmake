# SPDX-License-Identifier: MIT
# CVeskDll on ELF systems: the version script.
include(${PROJECT_SOURCE_DIR}/cmake/Exports.cmake)

set(map ${CMAKE_CURRENT_BINARY_DIR}/CVeskDll.map)
vesk_export_file(${CMAKE_CURRENT_SOURCE_DIR}/api/CVeskDll.map.in ${map})
set_target_properties(CVeskDll PROPERTIES LINK_DEPENDS ${map})
target_link_options(CVeskDll PRIVATE -Wl,--version-script=${map})
if(NOT VESK_SANITIZE)
  # With clang it is the program that brings the sanitizers' runtime.
  target_link_options(CVeskDll PRIVATE -Wl,--no-undefined)
endif()

# SPDX-License-Identifier: MIT
# vesk_export_file(TEMPLATE OUT): configures TEMPLATE with the names that the
# shared library exports. src/api/exports.txt is the one list of them.
function(vesk_export_file template out)
  set(list ${PROJECT_SOURCE_DIR}/src/api/exports.txt)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
  file(STRINGS ${list} names)
  list(JOIN names "\n    " VESK_EXPORTS_DEF)
  foreach(name IN LISTS names)
    string(APPEND VESK_EXPORTS_MAP "    ${name};\n")
  endforeach()
  configure_file(${template} ${out} @ONLY)
endfunction()

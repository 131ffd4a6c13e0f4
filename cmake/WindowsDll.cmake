# SPDX-License-Identifier: MIT
# CVeskDll on Windows: module definition, version resource and an import library
# for each family of linkers.
include(${PROJECT_SOURCE_DIR}/cmake/Exports.cmake)
enable_language(RC)

set(def ${CMAKE_CURRENT_BINARY_DIR}/CVeskDll.def)
vesk_export_file(${CMAKE_CURRENT_SOURCE_DIR}/api/CVeskDll.def.in ${def})
configure_file(${CMAKE_CURRENT_SOURCE_DIR}/api/CVeskDll.rc.in CVeskDll.rc @ONLY)
target_sources(CVeskDll PRIVATE api/WindowsUnload.cpp ${def} ${CMAKE_CURRENT_BINARY_DIR}/CVeskDll.rc)
set_target_properties(CVeskDll PROPERTIES PREFIX "" IMPORT_PREFIX "lib")

# The C++ runtime is inside, so that the DLL needs none but the system's own.
# Without a time stamp two builds are the same file.
target_link_options(CVeskDll PRIVATE
  -static -static-libgcc -static-libstdc++ -Wl,--no-insert-timestamp
  $<$<NOT:$<CONFIG:Debug>>:-s>)

# libCVeskDll.dll.a comes from the linker. CVeskDll.lib is for link.exe and
# lld-link, whose own short form only LLVM's tool writes.
find_program(VESK_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14 REQUIRED)
set(VESK_MSVC_IMPORT_LIBRARY ${PROJECT_BINARY_DIR}/lib/CVeskDll.lib
  CACHE INTERNAL "Import library for link.exe and lld-link")
set(machine i386:x86-64)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(machine i386)
endif()
add_custom_command(OUTPUT ${VESK_MSVC_IMPORT_LIBRARY}
  COMMAND ${VESK_DLLTOOL} -m ${machine} -d ${def} -D CVeskDll.dll -l ${VESK_MSVC_IMPORT_LIBRARY}
  DEPENDS ${def} VERBATIM)
add_custom_target(CVeskDll_msvc_import_library ALL DEPENDS ${VESK_MSVC_IMPORT_LIBRARY})

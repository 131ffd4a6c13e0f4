# SPDX-License-Identifier: MIT
# What an installed tree holds, the CMake package, pkg-config files and packages.
#
#   bin/                 CVeskDll.dll; vesk, the tool
#   lib/                 the shared library, the static C++ model and its meshes, import libraries
#   lib/cmake/vesk/      find_package(vesk): vesk::CVeskDll, vesk::vesk and vesk::mesh
#   lib/pkgconfig/       vesk.pc (the C library), vesk-model.pc (the C++ model), vesk-mesh.pc
#   include/vesk.h       the C library
#   include/vesk/        the C++ model: #include <vesk/Cyl.h>; the classes of the exceptions
#                        are for hosts of the C library too
#   include/vesk/mesh/   the meshes: #include <vesk/mesh/ElementMesh.h>
#   share/               the tool's manual page and completions, on Unix
#   share/vesk/bindings/ modules for other languages
#   share/doc/vesk/      README, licence, documents
#
# All of it may be moved to another place.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/vesk)
set(pc_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# One export a component of the package; see veskConfig.cmake.in.
install(TARGETS CVeskDll EXPORT vesk-library
  RUNTIME COMPONENT runtime
  LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS vesk EXPORT vesk-model
  ARCHIVE COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS vesk_mesh EXPORT vesk-mesh
  ARCHIVE COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
foreach(component library model mesh)
  install(EXPORT vesk-${component} NAMESPACE vesk::
    DESTINATION ${package_folder} COMPONENT development)
endforeach()
install(FILES ${PROJECT_SOURCE_DIR}/include/vesk.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/vesk
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development FILES_MATCHING PATTERN *.h)
if(WIN32)
  install(FILES ${VESK_MSVC_IMPORT_LIBRARY} ${PROJECT_BINARY_DIR}/src/CVeskDll.def
    DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
endif()

if(TARGET vesk_tool)
  install(TARGETS vesk_tool RUNTIME COMPONENT tools)
endif()
if(TARGET vesk_completions)
  set(data ${CMAKE_INSTALL_DATADIR})
  if(NOT VESK_DEBIAN_LAYOUT)
    install(FILES ${PROJECT_SOURCE_DIR}/docs/vesk.1
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
  endif()
  set(from ${PROJECT_BINARY_DIR}/completions)
  install(FILES ${from}/bash DESTINATION ${data}/bash-completion/completions RENAME vesk
    COMPONENT tools)
  install(FILES ${from}/zsh DESTINATION ${data}/zsh/vendor-completions RENAME _vesk
    COMPONENT tools)
  install(FILES ${from}/fish DESTINATION ${data}/fish/vendor_completions.d RENAME vesk.fish
    COMPONENT tools)
endif()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/veskConfig.cmake.in veskConfig.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/veskConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/veskConfig.cmake ${PROJECT_BINARY_DIR}/veskConfigVersion.cmake
  DESTINATION ${package_folder} COMPONENT development)

# A pkg-config file finds its prefix from where it lies.
file(RELATIVE_PATH VESK_PC_PREFIX /${pc_folder} /)
string(REGEX REPLACE "/$" "" VESK_PC_PREFIX "${VESK_PC_PREFIX}")
foreach(name vesk vesk-model vesk-mesh)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${pc_folder} COMPONENT development)
endforeach()

# Modules for other languages, as docs/hosts.md shows them.
set(bindings ${CMAKE_INSTALL_DATADIR}/vesk/bindings)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/hosts/ DESTINATION ${bindings} COMPONENT bindings
  PATTERN node_modules EXCLUDE PATTERN __pycache__ EXCLUDE)

if(VESK_DEBIAN_LAYOUT)
  include(${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake)
else()
  set(documents share/doc/vesk)
  install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/LICENSE
    ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/SECURITY.md
    DESTINATION ${documents} COMPONENT documents)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/packages/copyright.others
    DESTINATION ${documents} RENAME licences-of-others.txt COMPONENT documents)
  # Debian has this text in /usr/share/common-licenses.
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/packages/Apache-2.0.txt
    DESTINATION ${documents} COMPONENT documents)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION ${documents} COMPONENT documents)
endif()

include(${PROJECT_SOURCE_DIR}/cmake/Packages.cmake)

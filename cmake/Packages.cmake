# SPDX-License-Identifier: MIT
# The packages: .deb and .tar.gz, on Windows .zip.
set(CPACK_PACKAGE_NAME vesk)
set(CPACK_PACKAGE_VENDOR Vesk)
set(CPACK_PACKAGE_CONTACT "the Vesk developers <developers@vesk.example>")
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development bindings documents)
if(TARGET vesk_tool)
  list(APPEND CPACK_COMPONENTS_ALL tools)
endif()
if(TARGET vesk_python)
  # Of the .deb alone: pip takes a wheel.
  set(CPACK_VESK_PYTHON ON)
endif()
set(CPACK_VERBATIM_VARIABLES ON)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_SYSTEM_NAME win64)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(CPACK_SYSTEM_NAME win32)
  endif()
else()
  set(CPACK_GENERATOR DEB TGZ)
endif()

# The files of a package have the time of its release: two packages of it are the same.
include(${PROJECT_SOURCE_DIR}/cmake/Released.cmake)
if(CMAKE_HOST_UNIX)
  execute_process(COMMAND date -u -d "${VESK_RELEASED} 00:00" +%s OUTPUT_VARIABLE CPACK_VESK_TIME
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()

# Debian packages: what a program needs to run, and to be built, the modules of other
# languages and the tool. DebianLayout.cmake brings their places.
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/DebianLayout.cmake)
set(CPACK_VESK_SOURCE ${PROJECT_SOURCE_DIR})
set(CPACK_VESK_BUILD ${PROJECT_BINARY_DIR})
set(CPACK_VESK_ARGUMENTS -G ${CMAKE_GENERATOR} -DCMAKE_BUILD_TYPE=${CMAKE_BUILD_TYPE}
  -DCMAKE_C_COMPILER=${CMAKE_C_COMPILER} -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
  -DVESK_BUILD_TOOL=${VESK_BUILD_TOOL})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(runtime libcveskdll${PROJECT_VERSION_MAJOR})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "library that writes plant geometry as record files
Pipes, bends, ducts, steel and labels become lines of text that other programs
of plant design read. Thirteen C functions write them, from any language that
can call C.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libcveskdll-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${runtime} (= ${PROJECT_VERSION}), libstdc++-12-dev | libstdc++-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "headers of the library for plant geometry as record files
What programs are compiled and linked with: the C header, the C++ model that
also reads, moves and meshes elements (static), and the files for CMake and
pkg-config.")

set(CPACK_DEBIAN_BINDINGS_PACKAGE_NAME vesk-bindings)
set(CPACK_DEBIAN_BINDINGS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_BINDINGS_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_BINDINGS_PACKAGE_DEPENDS "${runtime} (>= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_BINDINGS_DESCRIPTION "modules for plant geometry as record files, for other languages
Sources for Python, C#, Node, Fortran, Free Pascal and VBA, each with a program
that writes every kind of element, to be copied into a project.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME vesk-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
# Opened when a workbook, or a compressed mesh, is asked for.
set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "libxlsxwriter4, libmeshoptimizer2d")
set(CPACK_COMPONENT_TOOLS_DESCRIPTION "tool for plant geometry in record files
Checks, measures, compares, converts, meshes and shows record files, and reads
piping component files and review models.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-vesk)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
# The module is of one version of Python.
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
  "python3 (>= 3.11~), python3 (<< 3.12), python3-numpy (>= 1:1.24)")
set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "python3-pandas, vesk-tools")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-dask, python3-distributed")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "plant geometry in record files as arrays, for Python
Reads record files into arrays of numpy and writes them, checks, measures and
compares them, looks for clashes, and shows them in notebooks.")
include(CPack)

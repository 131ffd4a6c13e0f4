# SPDX-License-Identifier: MIT
# Read by CPack before it packs.
if(CPACK_VESK_TIME AND NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  set(ENV{SOURCE_DATE_EPOCH} ${CPACK_VESK_TIME})
endif()

# A .deb has its libraries below lib/ARCHITECTURE, which is
# decided when CMake configures: so what was built is installed by a configuration of its
# own, beside the one that built it.
if(NOT CPACK_GENERATOR STREQUAL DEB)
  return()
endif()
list(REMOVE_ITEM CPACK_COMPONENTS_ALL documents)
if(CPACK_VESK_PYTHON)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(layout ${CPACK_VESK_BUILD}/debian)
file(MAKE_DIRECTORY ${layout})
foreach(built bin lib completions python)
  file(CREATE_LINK ${CPACK_VESK_BUILD}/${built} ${layout}/${built} SYMBOLIC)
endforeach()
execute_process(
  COMMAND ${CMAKE_COMMAND} -S ${CPACK_VESK_SOURCE} -B ${layout} ${CPACK_VESK_ARGUMENTS}
    -DCMAKE_INSTALL_PREFIX=/usr -DVESK_DEBIAN_LAYOUT=ON -DVESK_BUILD_VIEWER=OFF
    -DVESK_BUILD_TESTS=OFF -DVESK_BUILD_EXAMPLES=OFF -DVESK_BUILD_PYTHON=OFF
    -DVESK_DEBIAN_PYTHON=${CPACK_VESK_PYTHON}
  OUTPUT_FILE ${layout}/configured ERROR_FILE ${layout}/configured RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "The layout of Debian could not be configured: ${layout}/configured")
endif()
set(CPACK_INSTALL_CMAKE_PROJECTS "${layout};vesk;ALL;/")

# Which package a program needs that is linked with the library, and that the loader's
# cache is to be renewed. CPack would write scripts for the latter, where a trigger is the
# custom: it does not when it is given such scripts, and passes over those that are not there.
file(WRITE ${layout}/shlibs "libCVeskDll ${CPACK_PACKAGE_VERSION_MAJOR} \
libcveskdll${CPACK_PACKAGE_VERSION_MAJOR} (>= ${CPACK_PACKAGE_VERSION})\n")
file(WRITE ${layout}/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${layout}/shlibs ${layout}/triggers ${layout}/none/postinst ${layout}/none/postrm)

# Each package has a summary of its own, the first line of its description.
unset(CPACK_PACKAGE_DESCRIPTION_SUMMARY)

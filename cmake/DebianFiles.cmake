# SPDX-License-Identifier: MIT
# What each Debian package has besides its own: copyright, changelog, compressed texts.
find_program(VESK_GZIP gzip REQUIRED)

# compressed(FROM TO): without a time, so that two packages are the same.
function(compressed from to)
  execute_process(COMMAND ${VESK_GZIP} -9nc ${from} OUTPUT_FILE ${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(from ${PROJECT_SOURCE_DIR}/cmake/packages)
set(to ${PROJECT_BINARY_DIR}/texts)
file(MAKE_DIRECTORY ${to}/tools)
include(${PROJECT_SOURCE_DIR}/cmake/Released.cmake)
execute_process(COMMAND date -u -R -d "${VESK_RELEASED} 00:00" OUTPUT_VARIABLE VESK_RELEASED
  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
configure_file(${from}/changelog.in ${to}/changelog @ONLY)
compressed(${to}/changelog ${to}/changelog.gz)
file(READ ${from}/copyright copyright)
file(READ ${from}/copyright.others others)
file(WRITE ${to}/tools/copyright "${copyright}${others}")
compressed(${PROJECT_SOURCE_DIR}/docs/vesk.1 ${to}/vesk.1.gz)

function(texts component package copyright)
  install(FILES ${copyright} ${PROJECT_BINARY_DIR}/texts/changelog.gz
    DESTINATION share/doc/${package} COMPONENT ${component})
endfunction()
texts(runtime libcveskdll${PROJECT_VERSION_MAJOR} ${from}/copyright)
texts(development libcveskdll-dev ${from}/copyright)
texts(bindings vesk-bindings ${from}/copyright)
texts(tools vesk-tools ${to}/tools/copyright)
if(VESK_DEBIAN_PYTHON)
  # The module is built already and stripped.
  set(place lib/python3/dist-packages)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/python/vesk DESTINATION ${place} COMPONENT python
    PATTERN __pycache__ EXCLUDE)
  file(WRITE ${to}/METADATA "Metadata-Version: 2.1\nName: vesk\nVersion: ${PROJECT_VERSION}\n")
  install(FILES ${to}/METADATA DESTINATION ${place}/vesk-${PROJECT_VERSION}.dist-info
    COMPONENT python)
  texts(python python3-vesk ${to}/tools/copyright)
endif()
install(FILES ${to}/vesk.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION share/doc/libcveskdll-dev
  COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs DESTINATION share/doc/libcveskdll-dev
  COMPONENT development)

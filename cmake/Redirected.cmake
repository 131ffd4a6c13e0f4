# SPDX-License-Identifier: MIT
# A project that fetches the sources may still ask by find_package: then FetchContent
# reads this, and what is no component is refused as by the installed package.
if(NOT CMAKE_FIND_PACKAGE_REDIRECTS_DIR)
  return()
endif()
file(WRITE ${CMAKE_FIND_PACKAGE_REDIRECTS_DIR}/vesk-extra.cmake [=[
foreach(component IN LISTS vesk_FIND_COMPONENTS)
  if(component MATCHES "^(library|model|mesh)$")
    set(vesk_${component}_FOUND TRUE)
  elseif(vesk_FIND_REQUIRED_${component})
    set(vesk_FOUND FALSE)
    set(vesk_NOT_FOUND_MESSAGE
      "vesk has no component ${component}; it has library, model and mesh")
  endif()
endforeach()
unset(component)
]=])

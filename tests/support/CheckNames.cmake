# SPDX-License-Identifier: MIT
# Fails if a static library defines a name that a host may have too: anything but
# the thirteen functions, the kernel's classes Ge..., the namespace GeEx and what
# is in the namespace Vesk.
#
#   cmake -DNM=nm -DLIBRARY=libvesk.a -P CheckNames.cmake
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} --defined-only --extern-only --format=posix ${LIBRARY}
  OUTPUT_VARIABLE lines COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+ [TDRBVWuwGSC] " names "${lines}")

# As the compiler writes names: what stands before a name (the type information
# of a class, the object of a function, a thunk, a member), then the outermost name.
# S with a letter is the standard library.
set(before "(T[VISTC]|T[hv]n?[0-9]+_(n?[0-9]+_)?|GV|GR|Z)*N?[KVRO]*")
set(outermost "(S[a-z]|9__gnu_cxx|4Vesk|4GeEx|[0-9]+Ge[A-Z])")
# The C functions, and what compilers add of their own; placement new and delete.
set(c_names "vk_[a-z][A-Za-z]*|DW\\.ref\\..*|__.*|_Z(nw|na)[mj]Pv|_Z(dl|da)PvS_")
foreach(name IN LISTS names)
  string(REGEX REPLACE " . $" "" name "${name}")
  if(NOT name MATCHES "^(_Z${before}${outermost}.*|${c_names})$")
    list(APPEND strangers "${name}")
  endif()
endforeach()
if(NOT names)
  message(FATAL_ERROR "${LIBRARY} defines no names")
endif()
if(strangers)
  list(REMOVE_DUPLICATES strangers)
  list(JOIN strangers "\n  " strangers)
  message(FATAL_ERROR "${LIBRARY} defines in the global namespace:\n  ${strangers}")
endif()

# SPDX-License-Identifier: MIT
# Brings node_modules up to package-lock.json; does nothing when it is.
#
#   cmake -DNPM=npm -P install.cmake
cmake_minimum_required(VERSION 3.25)

set(folder ${CMAKE_CURRENT_LIST_DIR})
# Two presets that are configured at once must not write at once.
file(LOCK ${folder}/node_modules.lock TIMEOUT 300)
set(done ${folder}/node_modules/.package-lock.json)
if(EXISTS ${done} AND NOT ${folder}/package-lock.json IS_NEWER_THAN ${done})
  return()
endif()
message(STATUS "Fetching the packages of the viewer")
# Not "npm ci": since npm 11 it wants the lock to name the packages of all other
# systems too, and not every registry has them.
execute_process(
  COMMAND ${NPM} install --no-save --no-audit --no-fund --loglevel=error --fetch-retries=3
  WORKING_DIRECTORY ${folder} RESULT_VARIABLE failed)
if(NOT failed EQUAL 0)
  message(FATAL_ERROR "npm install failed")
endif()
file(TOUCH ${done})

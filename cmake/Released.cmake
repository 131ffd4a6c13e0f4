# SPDX-License-Identifier: MIT
# When this version was released: the newest entry of CHANGELOG.md is this version's, and has
# its date. Sets VESK_RELEASED, as 2026-01-31.
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md newest REGEX "^## " LIMIT_COUNT 1)
if(NOT newest MATCHES "^## ${PROJECT_VERSION}, ([0-9-]+)$")
  message(FATAL_ERROR "CHANGELOG.md does not begin with ${PROJECT_VERSION} and a date: ${newest}")
endif()
set(VESK_RELEASED ${CMAKE_MATCH_1})

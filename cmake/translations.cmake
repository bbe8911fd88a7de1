# SPDX-License-Identifier: MIT

# `cmake --build build/dev --target lupdate` collects all user-visible strings into translations/quenda_en.ts.
find_program(QUENDA_LUPDATE NAMES lupdate lupdate-qt6 HINTS /usr/lib/qt6/bin)
if(QUENDA_LUPDATE)
  add_custom_target(
    lupdate
    COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_SOURCE_DIR}/translations
    COMMAND ${QUENDA_LUPDATE} -locations none -no-obsolete ${PROJECT_SOURCE_DIR}/src -ts
            ${PROJECT_SOURCE_DIR}/translations/quenda_en.ts
    COMMENT "Collecting translatable strings"
    VERBATIM)
endif()

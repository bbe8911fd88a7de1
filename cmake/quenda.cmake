# SPDX-License-Identifier: MIT

# What every target of this project is built with.
add_library(quenda_options INTERFACE)
target_compile_definitions(
  quenda_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_URL_CAST_FROM_STRING
                           QT_NO_KEYWORDS QT_USE_QSTRINGBUILDER)
target_compile_options(quenda_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow)
if(QUENDA_WARNINGS_AS_ERRORS)
  target_compile_options(quenda_options INTERFACE -Werror)
endif()
if(QUENDA_FUZZ)
  target_compile_options(quenda_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(QUENDA_SANITIZE)
  target_compile_definitions(quenda_options INTERFACE QUENDA_SANITIZED QUENDA_SANITIZED_ADDRESSES)
  target_compile_options(quenda_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                  -fno-omit-frame-pointer)
  target_link_options(quenda_options INTERFACE -fsanitize=address,undefined)
endif()
if(QUENDA_SANITIZE_THREADS)
  target_compile_definitions(quenda_options INTERFACE QUENDA_SANITIZED)
  target_compile_options(quenda_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(quenda_options INTERFACE -fsanitize=thread)
endif()

# The files of a program or library compile together, if that is wished for.
function(quenda_unity target)
  set_target_properties(
    ${target} PROPERTIES UNITY_BUILD ${QUENDA_UNITY} UNITY_BUILD_BATCH_SIZE 12
                         UNITY_BUILD_CODE_BEFORE_INCLUDE "// NOLINTNEXTLINE(bugprone-suspicious-include)")
endfunction()

# quenda_library(NAME SOURCES ... DEPENDS ...): one folder of src/, one static library.
function(quenda_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS")
  add_library(quenda_${name} STATIC ${arg_SOURCES})
  target_link_libraries(quenda_${name} PUBLIC ${arg_DEPENDS} PRIVATE quenda_options)
  target_include_directories(quenda_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  quenda_unity(quenda_${name})
endfunction()

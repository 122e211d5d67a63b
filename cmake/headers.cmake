# SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
# SPDX-License-Identifier: Apache-2.0
# Headers that are compiled once for many files. Half of the time of a build went into reading the
# same few large ones again and again.

# nw_precompile_headers(<name> HEADERS <header>... [LIBS <target>...])
# Compiles the headers once, with the directory's own settings. The library itself uses none.
function(nw_precompile_headers name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LIBS")
    file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "// Carries ${name}.\n")
    add_library(${name} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    target_link_libraries(${name} PRIVATE ${arg_LIBS} nw_options)
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${name} PRIVATE -fpch-preprocess) # for compiler caches
    endif()
endfunction()

# nw_use_headers(<name> <target>...): the targets are compiled with them. Their options have to be
# the same; the compiler warns of headers that it cannot use.
function(nw_use_headers name)
    foreach(target ${ARGN})
        target_precompile_headers(${target} REUSE_FROM ${name})
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fpch-preprocess>)
        endif()
    endforeach()
endfunction()

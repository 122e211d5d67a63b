# SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
# SPDX-License-Identifier: Apache-2.0
# Headers that are compiled once for many files. Half of the time of a build went into reading the
# same few large ones again and again.

# What a compiler cache needs beside them.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(nw_cacheable_headers -fpch-preprocess)
else()
    set(nw_cacheable_headers "SHELL:-Xclang -fno-pch-timestamp")
endif()

# nw_precompile_headers(<name> HEADERS <header>... [LIBS <target>...])
# Compiles the headers once, with the directory's own settings. The library itself uses none.
function(nw_precompile_headers name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LIBS")
    file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp CONTENT "// Carries ${name}.\n")
    add_library(${name} OBJECT EXCLUDE_FROM_ALL ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
    target_link_libraries(${name} PRIVATE ${arg_LIBS} nw_options)
    target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
    target_compile_options(${name} PRIVATE ${nw_cacheable_headers})
endfunction()

# nw_use_headers(<name> <target>...): the targets are compiled with them. Their options have to be
# the same; the compiler warns of headers that it cannot use.
function(nw_use_headers name)
    foreach(target ${ARGN})
        target_precompile_headers(${target} REUSE_FROM ${name})
        target_compile_options(${target}
            PRIVATE $<$<COMPILE_LANGUAGE:CXX>:${nw_cacheable_headers}>)
    endforeach()
endfunction()

# nw_opened_namespaces(<file> <out>)
# Where a file goes on in a namespace of the project, it finds there what the headers declared.
# <out>_declared declares those namespaces.
function(nw_opened_namespaces file out)
    file(STRINGS ${file} names REGEX "^namespace [a-z0-9_:]+ {")
    list(REMOVE_DUPLICATES names)
    set(text)
    set(declared)
    foreach(name IN LISTS names)
        string(REGEX REPLACE "^namespace (.*) {.*" "\\1" name ${name})
        string(APPEND declared "namespace ${name} {}\n")
        string(REPLACE "::" ";" steps ${name})
        set(path)
        foreach(step IN LISTS steps)
            string(APPEND path ::${step})
            string(SUBSTRING ${path} 2 -1 inner)
            string(APPEND text "namespace ${inner} { using namespace ${path}; }\n")
        endforeach()
    endforeach()
    set(${out} "${text}" PARENT_SCOPE)
    set(${out}_declared "${declared}" PARENT_SCOPE)
endfunction()

# nw_unite_tests(<list> <name>)
# Replaces the tests in the list of that name by files of some tests each. What many tests draw
# from the test framework is then made once for all of them, which halves their time. Each test
# keeps its names to itself: headers come first, then the tests, each in a namespace of its own.
function(nw_unite_tests list name)
    set(tests ${${list}})
    list(FILTER tests INCLUDE REGEX "_test\\.cpp$")
    list(LENGTH tests remaining)
    if(NOT NW_UNITED_TESTS OR remaining LESS 2)
        return()
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${tests})

    set(united)
    while(remaining GREATER 0)
        list(SUBLIST tests 0 9 group)
        list(REMOVE_ITEM tests ${group})
        list(LENGTH tests remaining)

        set(includes)
        set(bodies)
        foreach(test IN LISTS group)
            file(STRINGS ${test} lines REGEX "^#include ")
            list(APPEND includes ${lines})
            string(MAKE_C_IDENTIFIER ${test} namespace)
            nw_opened_namespaces(${test} opened)
            string(APPEND bodies
                "\n${opened_declared}namespace ${namespace} {\n${opened}#include \"${test}\"\n}\n")
        endforeach()
        list(REMOVE_DUPLICATES includes)
        list(JOIN includes "\n" includes)

        list(GET group 0 first)
        cmake_path(GET first STEM stem)
        set(file ${CMAKE_CURRENT_BINARY_DIR}/${name}_from_${stem}.cpp)
        file(CONFIGURE OUTPUT ${file} CONTENT "${includes}\n${bodies}")
        list(APPEND united ${file})
    endwhile()

    list(FILTER ${list} EXCLUDE REGEX "_test\\.cpp$")
    set(${list} ${${list}} ${united} PARENT_SCOPE)
endfunction()

# SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
# SPDX-License-Identifier: Apache-2.0
# nw_options: warnings and sanitizers for every target of the project.
add_library(nw_options INTERFACE)
target_compile_options(nw_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
    -Wcast-qual -Wundef -Wvla $<$<BOOL:${NW_WARNINGS_AS_ERRORS}>:-Werror>
    $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual>
    -fstack-protector-strong
    # Memory is not worth a fifth of the compiler's time.
    $<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=600000>)
# Times beyond 2038 and files beyond 2 GiB, also where a word has 32 bits.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    add_compile_definitions(_TIME_BITS=64 _FILE_OFFSET_BITS=64)
endif()
# The same result wherever it is built, also where a compiler cache makes paths relative. Of two
# prefixes that fit the later one counts.
cmake_path(RELATIVE_PATH PROJECT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_BINARY_DIR}
    OUTPUT_VARIABLE nw_source_from_build)
target_compile_options(nw_options INTERFACE
    -ffile-prefix-map=${nw_source_from_build}=.
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
# Code of the tests is compiled fast rather than made fast; what they test is built as it ships.
define_property(TARGET PROPERTY NW_TEST_CODE INITIALIZE_FROM_VARIABLE NW_TEST_CODE)
set(nw_is_test_code $<BOOL:$<TARGET_PROPERTY:NW_TEST_CODE>>)
target_compile_options(nw_options INTERFACE
    $<${nw_is_test_code}:-O0;$<IF:$<CONFIG:Debug>,-g1,-g0>>)
# The reference system's programs wait for the kernel and the bus: half the optimiser's work does.
define_property(TARGET PROPERTY NW_REFERENCE_CODE INITIALIZE_FROM_VARIABLE NW_REFERENCE_CODE)
target_compile_options(nw_options INTERFACE
    $<$<AND:$<CONFIG:RelWithDebInfo>,$<BOOL:$<TARGET_PROPERTY:NW_REFERENCE_CODE>>>:-O1;-g1>)

if(NW_SANITIZE)
    # Names and lines are what a report shows; of a test, its name. What tests are watched for is how
    # they are written to: to look for their own undefined behaviour took two fifths of their time.
    target_compile_options(nw_options INTERFACE
        $<${nw_is_test_code}:-fsanitize=address;-g0>
        $<$<NOT:${nw_is_test_code}>:-fsanitize=address,undefined;-fno-sanitize=vptr;-g1>
        -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(nw_options INTERFACE -fsanitize=address,undefined)
elseif(NOT CMAKE_BUILD_TYPE STREQUAL "Debug" AND NOT CMAKE_CXX_FLAGS MATCHES "_FORTIFY_SOURCE")
    # A toolchain that brings a level of its own keeps it.
    target_compile_options(nw_options INTERFACE $<$<NOT:${nw_is_test_code}>:-D_FORTIFY_SOURCE=2>)
endif()

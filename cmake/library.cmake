# SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
# SPDX-License-Identifier: Apache-2.0
add_library(nw_table_texts INTERFACE)
target_compile_options(nw_table_texts INTERFACE -Wno-format-security)

# For tests/binary: whether the compiler reports each unit's frames and calls (beside its object, as
# .ci), and the list of the objects that nw_link_library writes.
set(nw_object_list ${PROJECT_BINARY_DIR}/library_objects.txt)
set(nw_reports_stack OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT NW_SANITIZE AND NOT CMAKE_BUILD_TYPE STREQUAL "Debug"
        AND NOT CMAKE_CONFIGURATION_TYPES)
    set(nw_reports_stack ON)
endif()

# nw_add_folder(<name> UNIT <unit> SOURCES <file>... USES <target>...)
# One folder of the library: its files, what it may use, and the source unit's name that its
# diagnostics carry. Needs nothing but libc.
function(nw_add_folder name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "UNIT" "SOURCES;USES")
    add_library(${name} OBJECT ${arg_SOURCES})
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${arg_USES} PRIVATE nw_options)
    target_compile_definitions(${name} PRIVATE NW_UNIT=${arg_UNIT})
    # Texts of the diagnostics stand in constant tables as well as in literals. The flag must follow
    # nw_options' -Wall, so it comes by way of a target linked behind it.
    target_link_libraries(${name} PRIVATE nw_table_texts)
    target_compile_options(${name} PRIVATE
        -g # the interface is compared by its debug information, which installation strips
        -fno-exceptions -fno-rtti -fno-threadsafe-statics -ffunction-sections -fdata-sections
        -fno-asynchronous-unwind-tables -fno-unwind-tables)
    if(NW_SANITIZE)
        # Its tests make millions of calls.
        target_compile_options(${name} PRIVATE -O1)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # The smaller code of the two register allocators, on ARM.
        target_compile_options(${name} PRIVATE $<$<CONFIG:MinSizeRel>:-fira-algorithm=priority>)
    endif()
    if(nw_reports_stack)
        target_compile_options(${name} PRIVATE -fcallgraph-info=su,da)
        # A compiler cache would give back the object without its report.
        set_target_properties(${name} PROPERTIES CXX_COMPILER_LAUNCHER "")
    endif()
    set_property(GLOBAL APPEND PROPERTY NW_LIBRARY_FOLDERS ${name})
endfunction()

# nw_link_library(): the shared library network_mng and its static twin for tests of internal
# functions, from all folders added before. Platform functions stay undefined.
function(nw_link_library)
    get_property(folders GLOBAL PROPERTY NW_LIBRARY_FOLDERS)
    list(TRANSFORM folders REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>" OUTPUT_VARIABLE objects)

    if(nw_reports_stack)
        file(GENERATE OUTPUT ${nw_object_list} CONTENT "$<JOIN:${objects},\n>\n")
    endif()

    # No C++ runtime: linked as C, without what C++ would add and without start files, since the
    # library has neither constructors nor destructors.
    set(CMAKE_CXX_IMPLICIT_LINK_LIBRARIES "")

    add_library(network_mng SHARED ${objects})
    add_library(network_mng_static STATIC ${objects})
    foreach(target network_mng network_mng_static)
        set_target_properties(${target} PROPERTIES
            OUTPUT_NAME network_mng
            LINKER_LANGUAGE C
            LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}
            ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
        target_link_libraries(${target} PUBLIC nw_include PRIVATE nw_options)
    endforeach()

    set(version_script ${PROJECT_SOURCE_DIR}/network/libnetwork_mng.map)
    set_target_properties(network_mng PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        LINK_DEPENDS ${version_script})
    target_link_options(network_mng PRIVATE -nostartfiles
        -Wl,--version-script=${version_script} -Wl,--gc-sections -Wl,-Bsymbolic-functions -Wl,--as-needed
        -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endfunction()

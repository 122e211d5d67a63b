# SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
# SPDX-License-Identifier: Apache-2.0
# Target man3: a manual page for each exported name, in docs/man3/ of the build tree.
find_program(NW_PERL perl DOC "Writes the manual pages of section 3")
if(NOT NW_PERL)
    message(STATUS "perl is missing: no manual pages of section 3")
    return()
endif()

set(nw_man3_directory ${PROJECT_BINARY_DIR}/docs/man3)
set(nw_man3_generator ${PROJECT_SOURCE_DIR}/docs/man/make-man3)
set(nw_man3_header ${PROJECT_SOURCE_DIR}/include/network_mng.h)
set(nw_man3_dated_page ${PROJECT_SOURCE_DIR}/docs/man/libnetwork_mng.7)
file(GLOB nw_man3_topics CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/network_mng/*.h)

# From scratch, so that no page outlives its function.
add_custom_command(OUTPUT ${nw_man3_directory}.stamp
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${nw_man3_directory}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${nw_man3_directory}
    COMMAND ${NW_PERL} ${nw_man3_generator} ${nw_man3_header} ${nw_man3_dated_page}
        ${nw_man3_directory}
    COMMAND ${CMAKE_COMMAND} -E touch ${nw_man3_directory}.stamp
    DEPENDS ${nw_man3_generator} ${nw_man3_header} ${nw_man3_dated_page} ${nw_man3_topics}
    COMMENT "Writing manual pages of section 3"
    VERBATIM)
add_custom_target(man3 ALL DEPENDS ${nw_man3_directory}.stamp)

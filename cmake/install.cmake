# SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
# SPDX-License-Identifier: Apache-2.0
# What `cmake --install` lays down, in three components that are Debian packages, too:
#   runtime      the shared library
#   development  headers, pkg-config file, CMake package, manual of the library
#   reference    the reference system: platform, programs, services
# Everything goes beneath the prefix that is named at installation, so that one build serves both
# /usr/local and a package.

# Debian keeps libraries by architecture in each prefix that the loader knows.
if(CMAKE_LIBRARY_ARCHITECTURE AND EXISTS /etc/debian_version)
    set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Libraries")
endif()
# Modes that do not hang on the umask of whoever installs.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
foreach(directory BINDIR SBINDIR LIBDIR INCLUDEDIR)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${directory}}")
        message(FATAL_ERROR "CMAKE_INSTALL_${directory} has to be relative to the prefix, "
            "since installed files name it beneath that")
    endif()
endforeach()

set(nw_packaging ${PROJECT_SOURCE_DIR}/packaging)
set(nw_package_runtime libnetwork-mng${PROJECT_VERSION_MAJOR})
set(nw_package_development libnetwork-mng-dev)
set(nw_package_reference network-mng-reference)

set(nw_headers ${CMAKE_INSTALL_INCLUDEDIR}/network_mng)
set(nw_pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(nw_cmake_package ${CMAKE_INSTALL_LIBDIR}/cmake/network_mng)
# The platform is no library for everybody: what is linked with it looks for it here.
set(nw_platform_directory ${CMAKE_INSTALL_LIBDIR}/network-mng)

# nw_install_configured(<component> <template> <destination>)
# Installs packaging/<template>.in. It may name directories, so it is filled in at installation.
# nw_prefix there is the prefix as every reader finds it; an empty one stands for the root.
function(nw_install_configured component template destination)
    install(CODE "
        set(PROJECT_VERSION \"${PROJECT_VERSION}\")
        set(nw_headers \"${nw_headers}\")
        set(nw_platform_directory \"${nw_platform_directory}\")
        set(CMAKE_INSTALL_INCLUDEDIR \"${CMAKE_INSTALL_INCLUDEDIR}\")
        set(CMAKE_INSTALL_LIBDIR \"${CMAKE_INSTALL_LIBDIR}\")
        set(CMAKE_INSTALL_SBINDIR \"${CMAKE_INSTALL_SBINDIR}\")
        set(nw_prefix \"\${CMAKE_INSTALL_PREFIX}\")
        if(nw_prefix)
            cmake_path(ABSOLUTE_PATH nw_prefix NORMALIZE)
        endif()
        configure_file(\"${nw_packaging}/${template}.in\"
            \"${PROJECT_BINARY_DIR}/packaging/${template}\" @ONLY)
        file(INSTALL \"${PROJECT_BINARY_DIR}/packaging/${template}\" TYPE FILE
            DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${destination}\")"
        COMPONENT ${component})
endfunction()

# nw_install_compressed(<component> <name> <file> <destination>)
# Installs the file as <name>.gz, made without the name and the time that gzip would keep.
function(nw_install_compressed component name file destination)
    set(compressed ${PROJECT_BINARY_DIR}/packaging/${component}/${name}.gz)
    cmake_path(GET compressed PARENT_PATH directory)
    add_custom_command(OUTPUT ${compressed}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${directory}
        COMMAND gzip -9nc ${file} > ${compressed}
        DEPENDS ${file} VERBATIM)
    set_property(GLOBAL APPEND PROPERTY NW_COMPRESSED_FILES ${compressed})
    install(FILES ${compressed} DESTINATION ${destination} COMPONENT ${component})
endfunction()

# nw_install_manual(<component> <page>...): pages of docs/man.
function(nw_install_manual component)
    foreach(page ${ARGN})
        string(REGEX MATCH "[0-9]$" section ${page})
        nw_install_compressed(${component} ${page} ${PROJECT_SOURCE_DIR}/docs/man/${page}
            ${CMAKE_INSTALL_MANDIR}/man${section})
    endforeach()
endfunction()

# nw_install_generated_manual(<component>): the pages of section 3, where there is a generator.
function(nw_install_generated_manual component)
    if(NOT TARGET man3)
        return()
    endif()
    set(directory ${PROJECT_BINARY_DIR}/packaging/${component}/man3)
    add_custom_command(OUTPUT ${directory}.stamp
        COMMAND ${CMAKE_COMMAND} -E rm -rf ${directory}
        COMMAND ${CMAKE_COMMAND} -E copy_directory ${nw_man3_directory} ${directory}
        COMMAND gzip -9nr ${directory}
        COMMAND ${CMAKE_COMMAND} -E touch ${directory}.stamp
        DEPENDS man3 ${nw_man3_directory}.stamp VERBATIM)
    set_property(GLOBAL APPEND PROPERTY NW_COMPRESSED_FILES ${directory}.stamp)
    install(DIRECTORY ${directory} DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT ${component})
endfunction()

# nw_install_notices(<component>): licence, notices and changes, where Debian has them.
function(nw_install_notices component)
    set(package ${nw_package_${component}})
    set(directory ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
    install(FILES ${nw_packaging}/${package}/copyright
        DESTINATION ${directory} COMPONENT ${component})
    nw_install_compressed(${component} CHANGELOG.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${directory})
    nw_install_compressed(${component} changelog ${nw_packaging}/changelog ${directory})
endfunction()

# ---- runtime ----

install(TARGETS network_mng EXPORT network_mng-targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    COMPONENT runtime NAMELINK_COMPONENT development)
nw_install_notices(runtime)

# ---- development ----

install(TARGETS nw_include EXPORT network_mng-targets
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} ${nw_headers}/platform)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
    FILES_MATCHING PATTERN "*.h")
install(FILES platform/bmc_platform.h DESTINATION ${nw_headers}/platform COMPONENT development)

install(FILES platform/template/bmc_platform_template.c
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${nw_package_development}/examples
    COMPONENT development)
foreach(document porting records)
    nw_install_compressed(development ${document}.md ${PROJECT_SOURCE_DIR}/docs/${document}.md
        ${CMAKE_INSTALL_DATAROOTDIR}/doc/${nw_package_development})
endforeach()

set_target_properties(nw_include PROPERTIES EXPORT_NAME headers)
install(EXPORT network_mng-targets NAMESPACE network_mng::
    DESTINATION ${nw_cmake_package} COMPONENT development)
configure_package_config_file(${nw_packaging}/network_mng-config.cmake.in
    ${PROJECT_BINARY_DIR}/packaging/network_mng-config.cmake
    INSTALL_DESTINATION ${nw_cmake_package} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/packaging/network_mng-config-version.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/packaging/network_mng-config.cmake
    ${PROJECT_BINARY_DIR}/packaging/network_mng-config-version.cmake
    DESTINATION ${nw_cmake_package} COMPONENT development)
nw_install_configured(development network_mng.pc ${nw_pkgconfig})

nw_install_manual(development libnetwork_mng.7)
nw_install_generated_manual(development)
nw_install_notices(development)

# ---- reference ----

if(TARGET bmc_platform)
    set(nw_programs nwctl nwmanagerd nwchassisd)
    file(RELATIVE_PATH nw_platform_from_programs
        /${CMAKE_INSTALL_SBINDIR} /${nw_platform_directory})
    # The build's own search path leaves its length behind: it must not name the build's directory.
    set_target_properties(${nw_programs} PROPERTIES
        BUILD_RPATH_USE_ORIGIN ON
        INSTALL_RPATH "$ORIGIN/${nw_platform_from_programs}")

    install(TARGETS bmc_platform
        LIBRARY DESTINATION ${nw_platform_directory} COMPONENT reference)
    install(TARGETS nwctl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT reference)
    install(TARGETS nwmanagerd nwchassisd
        RUNTIME DESTINATION ${CMAKE_INSTALL_SBINDIR} COMPONENT reference)

    nw_install_configured(reference network_mng-platform.pc ${nw_pkgconfig})
    nw_install_configured(reference network_mng-platform.cmake ${nw_cmake_package})
    foreach(service nwmanagerd nwchassisd nwchassisd-ipmi)
        nw_install_configured(reference ${service}.service lib/systemd/system)
    endforeach()
    install(FILES reference/manager/io.networkmng.conf
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/system.d COMPONENT reference)
    install(FILES ${nw_packaging}/${nw_package_reference}/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME ${nw_package_reference}
        COMPONENT reference)
    install(FILES reference/manager/example-config.json
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${nw_package_reference}/examples
        COMPONENT reference)
    install(FILES reference/nwctl/nwctl.bash-completion
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME nwctl
        COMPONENT reference)
    nw_install_manual(reference nwctl.1 nwmanagerd.8 nwchassisd.8)
    nw_install_notices(reference)
endif()

# Manual pages and changelogs in their compressed form, a part of every build.
get_property(nw_compressed_files GLOBAL PROPERTY NW_COMPRESSED_FILES)
add_custom_target(nw_compressed ALL DEPENDS ${nw_compressed_files})

include(${nw_packaging}/packages.cmake)

# SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
# SPDX-License-Identifier: Apache-2.0
# Debian packages, one for each component of install.cmake; scripts/package makes them.
set(NW_PACKAGE_MAINTAINER "libnetwork_mng developers <developers@libnetwork-mng.example>"
    CACHE STRING "Maintainer of the Debian packages")
set(nw_debian_x86_64-linux-gnu amd64)
set(nw_debian_arm-linux-gnueabihf armhf)

# nw_list_symbols(<variable>): Debian's symbols file from the library's map. A version node is named
# for the version that its functions came with: NETWORK_MNG_1 for 1.
function(nw_list_symbols variable)
    set(soname libnetwork_mng.so.${PROJECT_VERSION_MAJOR})
    set(text "${soname} ${nw_package_runtime} #MINVER#\n")
    string(APPEND text "* Build-Depends-Package: ${nw_package_development}\n")
    file(READ ${PROJECT_SOURCE_DIR}/network/libnetwork_mng.map map)
    string(REGEX REPLACE "#[^\n]*|local:[^}]*" "" map "${map}")
    string(REPLACE ";" "," map "${map}")
    string(REGEX MATCHALL "NETWORK_MNG_[0-9.]+ {[^}]*}" nodes "${map}")
    foreach(node ${nodes})
        string(REGEX MATCH "(NETWORK_MNG_([0-9.]+)) {" ignored "${node}")
        set(name ${CMAKE_MATCH_1})
        set(since ${CMAKE_MATCH_2})
        string(REGEX MATCHALL "[A-Za-z0-9_]+," symbols "${node}")
        foreach(symbol "${name}," ${symbols})
            string(REPLACE "," "@${name} ${since}" line "${symbol}")
            string(APPEND text " ${line}\n")
        endforeach()
    endforeach()
    set(${variable} "${text}" PARENT_SCOPE)
endfunction()

# nw_control_file(<component> <name> <text>): a file among those that dpkg keeps of the package.
function(nw_control_file component name text)
    file(WRITE ${PROJECT_BINARY_DIR}/packaging/${component}/${name} "${text}")
    set_property(GLOBAL APPEND PROPERTY NW_CONTROL_${component}
        ${PROJECT_BINARY_DIR}/packaging/${component}/${name})
endfunction()

# ---- all packages ----

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL runtime development)
if(TARGET bmc_platform)
    list(APPEND CPACK_COMPONENTS_ALL reference)
endif()
set(CPACK_PACKAGE_NAME network-mng)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_STRIP_FILES ON)
# The prefix as it will be, since installed files name directories beneath it.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS ${CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS})

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE network-mng)
set(CPACK_DEBIAN_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE "${nw_debian_${CMAKE_LIBRARY_ARCHITECTURE}}")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${NW_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# ---- what differs ----

# Dependencies name the packages of Debian 12 on every architecture alike: the libraries of another
# one come from a sysroot, of which dpkg-shlibdeps knows nothing. tests/packaging compares them with
# what the files ask for. CPack has no variable for Multi-Arch, so it follows the section's line.

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${nw_package_runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION "libs\nMulti-Arch: same")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libc6 (>= 2.36)")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "iputils-arping, network-mng-reference")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "network management library of a server's management controller
Reads the network configuration of a baseboard management controller (BMC)
from its database, checks changes before they are made, sends them to the
network manager, and writes the sentence that the operation log keeps of each.
.
A program that uses the library also brings a platform: functions that reach
the machine's database, bus and log.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${nw_package_development})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION "libdevel\nMulti-Arch: same")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${nw_package_runtime} (= ${PROJECT_VERSION}), libc6-dev | libc-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "network-mng-reference, pkgconf, cmake")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "network management library of a BMC (development files)
Headers, the contract of the platform that a program brings, and what
pkg-config and CMake need to link with the network management library.")

set(CPACK_DEBIAN_REFERENCE_PACKAGE_NAME ${nw_package_reference})
set(CPACK_DEBIAN_REFERENCE_PACKAGE_SECTION net)
set(nw_reference_depends
    "${nw_package_runtime} (>= ${PROJECT_VERSION})"
    "libc6 (>= 2.36)" "libgcc-s1 (>= 3.5)" "libstdc++6 (>= 12)"
    "liblmdb0 (>= 0.9.24)" "libsdbus-c++1 (>= 1.2.0)"
    "libnl-3-200 (>= 3.7.0)" "libnl-route-3-200 (>= 3.7.0)"
    "default-dbus-system-bus | dbus-system-bus")
list(JOIN nw_reference_depends ", " CPACK_DEBIAN_REFERENCE_PACKAGE_DEPENDS)
set(CPACK_DEBIAN_REFERENCE_PACKAGE_RECOMMENDS "iputils-arping, netbase")
set(CPACK_DEBIAN_REFERENCE_PACKAGE_SUGGESTS "lldpd")
set(CPACK_DEBIAN_REFERENCE_DESCRIPTION "reference system of the BMC network management library
The network management library's system on ordinary Linux: a platform on LMDB
and D-Bus, the network manager, a small chassis manager, and the command line
nwctl for all of it.
.
No service is started or enabled by the installation: the network manager
takes over interfaces only once it has been given a configuration and started.")

nw_list_symbols(nw_symbols)
nw_control_file(runtime symbols "${nw_symbols}")
nw_control_file(runtime shlibs
    "libnetwork_mng ${PROJECT_VERSION_MAJOR} ${nw_package_runtime} (>= ${PROJECT_VERSION})\n")
nw_control_file(runtime triggers "activate-noawait ldconfig\n")
foreach(script postinst prerm postrm)
    file(READ ${nw_packaging}/${nw_package_reference}/${script} text)
    nw_control_file(reference ${script} "${text}")
endforeach()
get_property(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA GLOBAL PROPERTY NW_CONTROL_runtime)
get_property(CPACK_DEBIAN_REFERENCE_PACKAGE_CONTROL_EXTRA GLOBAL PROPERTY NW_CONTROL_reference)

include(CPack)

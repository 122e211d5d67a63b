# SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
# SPDX-License-Identifier: Apache-2.0
# Debian's cross compiler for 32-bit ARM with hardware floating point, and the emulator that runs
# what it makes. libc and the C++ runtime are those that come with the compiler; further libraries
# are in the sysroot that scripts/arm-sysroot makes.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)

set(CMAKE_C_COMPILER arm-linux-gnueabihf-gcc)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)

# Nothing here is linked with what a compiler before GCC 7 made.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)

set(nw_arm_sysroot ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot-armhf)
if(EXISTS ${nw_arm_sysroot}/contents)
    get_filename_component(CMAKE_SYSROOT ${nw_arm_sysroot} ABSOLUTE)
    # pkg-config knows neither the compiler's sysroot nor its architecture.
    set(ENV{PKG_CONFIG_SYSROOT_DIR} ${CMAKE_SYSROOT})
    set(ENV{PKG_CONFIG_LIBDIR}
        ${CMAKE_SYSROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig)
    set(nw_arm_libraries ${CMAKE_SYSROOT})
else()
    set(CMAKE_FIND_ROOT_PATH /usr/arm-linux-gnueabihf)
    set(nw_arm_libraries /usr/arm-linux-gnueabihf)
endif()
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L ${nw_arm_libraries})

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

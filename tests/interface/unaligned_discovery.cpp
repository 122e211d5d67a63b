// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// What the system's files and programs tell; they are replaced by ones of known contents.
#include <cstdio>
#include <map>
#include <sys/mman.h>
#include <unistd.h>

#include "libc_symbol.hpp"
#include "unaligned.hpp"

namespace unaligned {

namespace {

constexpr int nameFile = 500; // descriptor of the name file that is written
constexpr std::size_t nameSize = 6;

// The file's contents are stored behind the call.
std::uint32_t writeName(const char *name, const char *path, std::uint8_t *contents)
{
    const int file = memfd_create("name", MFD_CLOEXEC);
    dup2(file, nameFile);
    close(file);
    const std::uint32_t result = NW_WriteBmcNameToFile(name, nameSize, path);
    EXPECT_EQ(pread(nameFile, contents, nameSize, 0), static_cast<ssize_t>(nameSize));
    close(nameFile);
    return result;
}

const std::map<std::string, std::string> &files()
{
    static const std::map<std::string, std::string> contents{
        {"/proc/net/arp", "IP address HW type Flags HW address Mask Device\n" + gatewayText() +
                              " 0x1 0x2 02:aa:bb:cc:dd:0e * eth1\n"},
        {"/run/systemd/netif/dhcp/eth1.ntpv4", "NTP=192.0.2.1 192.0.2.2\n"},
        {NW_BMC_NAME_FILE, "bmc-7\n"},
    };
    return contents;
}

} // namespace

std::vector<Row> discoveryRows()
{
    return {
        row("NW_GetV4DefaultGwMacAddr",
            +[](std::uint8_t *mac) { NW_GetV4DefaultGwMacAddr(NW_PORT_ETH1, mac); },
            {Bytes(NW_MAC_SIZE)}),
        row("LIB_NW_ParseNTPInfo",
            +[](const char *name, char *servers) {
                return LIB_NW_ParseNTPInfo(NW_FAMILY_IPV4, name, NW_PORT_ETH1, 64, servers);
            },
            {text("eth1"), Bytes(64)}),
        UNALIGNED_ROW(LIB_NW_ReadBmcNameFromFile, {Bytes(NW_BMC_NAME_SIZE)}),
        row("NW_WriteBmcNameToFile", writeName,
            {text("bmc-8\n"), text("/proc/self/fd/" + std::to_string(nameFile)), Bytes(nameSize)}),
        UNALIGNED_ROW(NW_IPV4AddressConflict, {text("eth0"), Bytes{192, 168, 20, 7}}),
    };
}

} // namespace unaligned

// The names are the linker's. Nothing asks the network whether an address is taken: the probe
// cannot be started.
extern "C" {

int __wrap_access(const char *path, int mode);
int __real_access(const char *path, int mode);
FILE *__wrap_fopen(const char *path, const char *mode) NW_WRAP_SYMBOL(fopen);
FILE *__real_fopen(const char *path, const char *mode) NW_REAL_SYMBOL(fopen);
FILE *__wrap_popen(const char *command, const char *mode);
FILE *__real_popen(const char *command, const char *mode);

int __wrap_access(const char *path, int mode)
{
    return unaligned::files().contains(path) ? 0 : __real_access(path, mode);
}

FILE *__wrap_fopen(const char *path, const char *mode)
{
    const auto file = unaligned::files().find(path);
    if (file == unaligned::files().end()) {
        return __real_fopen(path, mode);
    }
    static std::string contents;
    contents = file->second;
    return fmemopen(contents.data(), contents.size(), "r");
}

FILE *__wrap_popen(const char *command, const char *mode)
{
    return std::string(command).starts_with("arping") ? nullptr : __real_popen(command, mode);
}
}

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/system/system.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <system_error>

#include <unistd.h>

#include "common/files.hpp"
#include "common/state_directory.hpp"
#include "manager/system/lldp_agent.hpp"
#include "network_mng/discovery.h"

namespace bmc::manager {

namespace {

std::filesystem::path resolverFile()
{
    return stateDirectory() / "resolv.conf";
}

/* More than any of the files should have. */
constexpr std::size_t fileLimit = 64 << 10;

/* Whether the file may be one to be read all the same. */
bool isPassing(const std::error_code &error)
{
    constexpr std::errc passing[] = {std::errc::too_many_files_open,
                                     std::errc::too_many_files_open_in_system,
                                     std::errc::not_enough_memory, std::errc::io_error};
    return std::ranges::any_of(passing, [&](std::errc reason) { return error == reason; });
}

/* Empty when there is no such file, or it is none to be read. */
std::string contentOf(const std::filesystem::path &path)
{
    try {
        return readFile(path, fileLimit);
    } catch (const std::system_error &error) {
        if (isPassing(error.code())) {
            throw MachineError(error.what());
        }
        return "";
    }
}

void setContent(const std::filesystem::path &path, const std::string &content)
{
    constexpr mode_t readable = 0644;
    try {
        content.empty() ? removeFile(path) : replaceFile(path, content, readable);
    } catch (const std::system_error &error) {
        throw MachineError(error.what());
    }
}

std::string kernelName()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

void setKernelName(const std::string &name)
{
    if (sethostname(name.data(), name.size()) != 0) {
        throw MachineError(std::generic_category().message(errno));
    }
}

} // namespace

void System::read(Items &items) const
{
    items.insert({Kind::hostName, {}, kernelName()});
    items.insert({Kind::bmcName, {}, contentOf(NW_BMC_NAME_FILE)});
    items.insert({Kind::resolver, {}, contentOf(resolverFile())});
    if (!told_.empty()) {
        items.insert({Kind::lldp, {}, told_});
    }
}

void System::apply(const Item &item)
{
    switch (item.kind) {
    case Kind::hostName:
        return setKernelName(item.text);
    case Kind::bmcName:
        return setContent(NW_BMC_NAME_FILE, item.text);
    case Kind::resolver:
        return setContent(resolverFile(), item.text);
    case Kind::lldp:
        told_ = item.text;
        return tellLldpAgent(told_);
    default:
        throw MachineError("not the system's");
    }
}

void System::forget()
{
    told_.clear();
}

std::string bootName()
{
    std::string name = contentOf("/proc/sys/kernel/random/boot_id");
    name.erase(std::min(name.find('\n'), name.size()));
    return name;
}

std::chrono::milliseconds uptime()
{
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec));
}

bool isWatchdogRunning()
{
    return contentOf(stateDirectory() / "watchdog-running").starts_with('1');
}

} // namespace bmc::manager

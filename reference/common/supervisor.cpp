// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/supervisor.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>

#include "common/descriptor.hpp"
#include "common/state_directory.hpp"

namespace bmc {

void tellSupervisorReady() noexcept
{
    constexpr std::string_view message = "READY=1";
    const std::string_view name = environmentOr("NOTIFY_SOCKET", "");
    sockaddr_un address{};
    if (name.empty() || name.size() >= sizeof(address.sun_path)) {
        return;
    }
    address.sun_family = AF_UNIX;
    std::copy(name.begin(), name.end(), address.sun_path);
    if (name.front() == '@') { /* an abstract name */
        address.sun_path[0] = '\0';
    }

    const Descriptor socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size());
    (void)!sendto(socket.get(), message.data(), message.size(), MSG_NOSIGNAL,
                  reinterpret_cast<const sockaddr *>(&address), length);
}

} // namespace bmc

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* How an RPC call travels over D-Bus: one bus name for each service, one object, one method.
 *
 *   method Call(in u function, in ay request, out ay response)
 *
 * A response is empty or the service's full response record. */
#pragma once

#include <cstdint>
#include <string>

namespace bmc::rpc {

inline constexpr const char *objectPath = "/io/networkmng/Rpc";
inline constexpr const char *interfaceName = "io.networkmng.Rpc1";
inline constexpr const char *callMethod = "Call";

/* Bus name that the service's owner holds, for example "io.networkmng.Service24". */
inline std::string busName(std::uint32_t service)
{
    return "io.networkmng.Service" + std::to_string(service);
}

} // namespace bmc::rpc

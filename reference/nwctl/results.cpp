// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "results.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <span>

#include "manager_results.hpp"

namespace nwctl {

namespace {

#define NAMED(code, subject, meaning)                                                              \
    {                                                                                              \
        code, subject, #code, meaning                                                              \
    }

struct Row {
    NW_RESULT code;
    Subject subject;
    std::string_view name;
    std::string_view meaning;
};

/* clang-format off */
constexpr Row rows[] = {
    NAMED(NW_OK,                       Subject::none, "success"),
    NAMED(NW_ERR_GENERAL,              Subject::none, "general failure"),
    NAMED(NW_ERR_NULL_POINTER,         Subject::none, "null pointer argument"),
    NAMED(NW_ERR_OUT_OF_RANGE,         Subject::none, "parameter out of range"),
    NAMED(NW_ERR_DB_ENVIRONMENT,       Subject::none, "the configuration database has no environment"),
    NAMED(NW_ERR_DB_READ,              Subject::none, "a configuration record could not be read"),
    NAMED(NW_ERR_DB_WRITE,             Subject::none, "a configuration record could not be written"),
    NAMED(NW_ERR_RPC_TRANSPORT,        Subject::none, "the service cannot be reached or did not answer properly"),
    NAMED(NW_ERR_MAC_NULL_POINTER,     Subject::none, "null pointer argument of the MAC conversion"),
    NAMED(NW_ERR_PORT_NOT_SUPPORTED,   Subject::none, "the port is not present on this board"),
    NAMED(NW_OPERLOG_LOCAL_FAIL,       Subject::none, "refused by the library before anything was sent"),
    NAMED(NW_ERR_ARP_SUSPEND,          Subject::none, "the ARP replies could not be suspended"),
    NAMED(NW_ERR_ARP_UPDATE,           Subject::none, "the ARP state could not be updated"),
    NAMED(NW_ERR_ARP_RESUME,           Subject::none, "the suspended ARP replies could not be resumed"),
    NAMED(NW_ERR_IPV4_SAME_SEGMENT,    Subject::ipv4, "the IPv4 address lies in the segment of another port or of the wireless interface"),
    NAMED(NW_ERR_IPV6_SAME_SEGMENT,    Subject::ipv6, "the IPv6 address lies in the segment of the other port"),
    NAMED(NW_ERR_IFC_NO_DB,            Subject::none, "no configuration database for the interface state"),
    NAMED(NW_ERR_IFC_WRITE,            Subject::none, "the interface state could not be written"),
    NAMED(NW_ERR_IPV4_ROUTE1,          Subject::ipv4, "IPv4 static route 1 lies in the segment of an address, of another route or of the wireless interface"),
    NAMED(NW_ERR_IPV4_ROUTE2,          Subject::ipv4, "IPv4 static route 2 lies in the segment of an address, of another route or of the wireless interface"),
    NAMED(NW_ERR_IPV6_ROUTE1,          Subject::ipv6, "IPv6 static route 1 lies in the segment of an address or of another route"),
    NAMED(NW_ERR_IPV6_ROUTE2,          Subject::ipv6, "IPv6 static route 2 lies in the segment of an address or of another route"),
    NAMED(NW_ERR_IPV4_IN_ROUTE1,       Subject::ipv4, "the IPv4 address lies in the segment of static route 1"),
    NAMED(NW_ERR_IPV4_IN_ROUTE2,       Subject::ipv4, "the IPv4 address lies in the segment of static route 2"),
    NAMED(NW_ERR_IPV6_IN_ROUTE1,       Subject::ipv6, "the IPv6 address lies in the segment of static route 1"),
    NAMED(NW_ERR_IPV6_IN_ROUTE2,       Subject::ipv6, "the IPv6 address lies in the segment of static route 2"),
    NAMED(NW_ERR_IPV4_ROUTE1_GATEWAY,  Subject::ipv4, "the gateway of IPv4 static route 1 lies in the segment of an address or of the wireless interface"),
    NAMED(NW_ERR_IPV4_ROUTE2_GATEWAY,  Subject::ipv4, "the gateway of IPv4 static route 2 lies in the segment of an address or of the wireless interface"),
    NAMED(NW_ERR_IPV6_ROUTE1_GATEWAY,  Subject::ipv6, "the gateway of IPv6 static route 1 lies in the segment of an address or of another route"),
    NAMED(NW_ERR_IPV6_ROUTE2_GATEWAY,  Subject::ipv6, "the gateway of IPv6 static route 2 lies in the segment of an address or of another route"),
    NAMED(NW_ERR_IPV4_HOLDS_GATEWAY1,  Subject::ipv4, "the segment of the IPv4 address holds the gateway of static route 1"),
    NAMED(NW_ERR_IPV4_HOLDS_GATEWAY2,  Subject::ipv4, "the segment of the IPv4 address holds the gateway of static route 2"),
    NAMED(NW_ERR_IPV6_HOLDS_GATEWAY1,  Subject::ipv6, "the segment of the IPv6 address holds the gateway of static route 1"),
    NAMED(NW_ERR_IPV6_HOLDS_GATEWAY2,  Subject::ipv6, "the segment of the IPv6 address holds the gateway of static route 2"),
};

#undef NAMED

/* Codes of the network manager's own: their IPMI completion code tells the kind of refusal. */
constexpr Row refusals[] = {
    {NW_IPMI_CC_INVALID_DATA, Subject::none, "NW_MANAGER_INVALID_DATA", "refused by the network manager: invalid data field"},
    {NW_IPMI_CC_OUT_OF_RANGE, Subject::none, "NW_MANAGER_OUT_OF_RANGE", "refused by the network manager: parameter out of range"},
    {NW_IPMI_CC_NOT_IN_STATE, Subject::none, "NW_MANAGER_NOT_IN_STATE", "refused by the network manager: not supported in the present state"},
};

/* Everything else, by the family in the code's upper half. */
constexpr Row families[] = {
    {0x1E000000, Subject::none, "NW_MANAGER_OTHER", "refused by the network manager for a reason without a name here"},
    {0x9E000000, Subject::none, "NW_MANAGER_OTHER", "refused by the network manager for a reason without a name here"},
    {0x81000000, Subject::none, "NW_ERR_OTHER",     "library failure without a name here"},
};
/* clang-format on */

constexpr NW_RESULT familyBits = 0xFFFF0000;
constexpr NW_RESULT networkFamily = 0x1E000000;
constexpr NW_RESULT markBits = 0x00000E00;

const Row *find(std::span<const Row> table, NW_RESULT code)
{
    const auto row = std::ranges::find(table, code, &Row::code);
    return row == table.end() ? nullptr : &*row;
}

const Row *findNamed(NW_RESULT code)
{
    if (const Row *row = find(rows, code)) {
        return row;
    }
    if ((code & familyBits) != networkFamily) {
        return nullptr;
    }
    const auto sameError = [code](const Row &row) {
        return (row.code & ~markBits) == (code & ~markBits);
    };
    const auto row = std::ranges::find_if(rows, sameError);
    return row == std::end(rows) ? nullptr : row;
}

/* The network manager's own words for what it answers. */
std::optional<std::string> managersMeaning(NW_RESULT code)
{
    using bmc::manager::resultMeanings;
    const auto sameCode = [code](const auto &row) {
        return code != NW_OK && static_cast<NW_RESULT>(row.result) == code;
    };
    const auto row = std::ranges::find_if(resultMeanings, sameCode);
    if (row == std::end(resultMeanings)) {
        return std::nullopt;
    }
    return "refused by the network manager: " + std::string(row->meaning);
}

std::string hexText(const char *format, std::uint32_t number)
{
    std::array<char, sizeof("0x12345678")> text{};
    std::snprintf(text.data(), text.size(), format, number);
    return text.data();
}

} // namespace

ResultInfo describeResult(NW_RESULT code)
{
    const Row *row = findNamed(code);
    if (row == nullptr) {
        row = find(refusals, LIB_NW_ChangeInvErr2IpmiCC(code));
    }
    if (row == nullptr) {
        row = find(families, code & familyBits);
    }
    if (row == nullptr) {
        return {code, Subject::none, "PLATFORM",
                "a code of the platform's own, such as the configuration database's"};
    }
    return {code, row->subject, row->name,
            managersMeaning(code).value_or(std::string(row->meaning))};
}

std::string codeText(NW_RESULT code)
{
    return hexText("0x%08x", code);
}

std::string completionText(NW_RESULT code)
{
    return hexText("0x%02x", LIB_NW_ChangeInvErr2IpmiCC(code));
}

} // namespace nwctl

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/output.hpp"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace nwctl {
namespace {

/* Each kind of row and of value once. */
Rows everything()
{
    List routes;
    routes.rows.push_back(
        {.label = "route 1", .value = Object{{hidden("number", 1)}}, .text = "via 10.0.0.1"});
    return {line("Port eth1"),
            hidden("port", "eth1"),
            {"LAN", "lan", true},
            {"VLAN", "vlan", nullptr},
            {"Channel", "channel", 8U},
            {"Servers", "servers", std::vector<std::optional<std::string>>{"a\nb", std::nullopt}},
            {"IPv4", "ipv4",
             Object{{{"address", "address", "10.0.0.2"}, {.key = "routes", .value = routes}}},
             "enabled, static"},
            {"NC-SI", "ncsi", Object{{{"Adapter", "adapter", 1}}}, "off", true},
            {.label = "Only text", .value = "shown"},
            {"Nothing", "nothing", List{}}};
}

TEST(TextOf, PrintsATableOfWhatHasALabel)
{
    EXPECT_EQ(textOf(everything()), "Port eth1\n"
                                    "  LAN           enabled\n"
                                    "  VLAN          -\n"
                                    "  Channel       8\n"
                                    "  Servers       a\\x0ab, -\n"
                                    "  IPv4          enabled, static\n"
                                    "    address     10.0.0.2\n"
                                    "    route 1     via 10.0.0.1\n"
                                    "  NC-SI         off\n"
                                    "  Only text     shown\n"
                                    "  Nothing       none\n");
}

TEST(DocumentOf, HoldsWhatHasAKey)
{
    const auto document = nlohmann::json::parse(documentOf(everything()));

    EXPECT_EQ(document, nlohmann::json::parse(R"({"port": "eth1", "lan": true, "vlan": null,
        "channel": 8, "servers": ["a\nb", null],
        "ipv4": {"address": "10.0.0.2", "routes": [{"number": 1}]}, "ncsi": {"adapter": 1},
        "nothing": []})"));
}

TEST(TextOf, PutsAnEmptyLineBetweenBlocks)
{
    List blocks;
    for (const char *name : {"eth0", "eth1"}) {
        blocks.rows.push_back({.value = Object{{{"Port", "port", name}}}});
    }

    EXPECT_EQ(textOf({{.key = "ports", .value = blocks}}),
              "  Port          eth0\n\n  Port          eth1\n");
}

TEST(TextOf, KeepsALongLabelApartFromItsValue)
{
    EXPECT_EQ(textOf({{"A label without end", "key", 1}}), "  A label without end 1\n");
}

TEST(Value, IsTakenFromJsonAsItIs)
{
    for (const char *text : {"null", "true", "-3", R"("text")", R"([1,"a",null])"}) {
        const auto json = nlohmann::ordered_json::parse(text);
        EXPECT_EQ(nlohmann::ordered_json::parse(documentOf({hidden("key", Value(json))}))["key"],
                  json);
    }
}

TEST(MacText, WritesLowerCaseHex)
{
    constexpr std::uint8_t address[] = {0x52, 0x54, 0x00, 0xAB, 0xCD, 0x0F};
    EXPECT_EQ(macText(address), "52:54:00:ab:cd:0f");
}

} // namespace
} // namespace nwctl

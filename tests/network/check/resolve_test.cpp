// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The resolvers on a scripted system resolver: what they ask it, which address remains.
#include <netdb.h>
#include <netinet/in.h>

#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "network_mng/check.h"

namespace {

// What the system's resolver is asked and what it answers.
struct Resolver {
    int error = 0;
    std::vector<std::string> texts; // of the list, in order

    int asked = 0;
    std::string host, service;
    addrinfo hints{};
    addrinfo *given = nullptr;
    int freed = 0;
};
Resolver resolver;

// An entry and its address.
struct Entry {
    addrinfo info{};
    sockaddr_storage address{};
};
std::vector<Entry> entries;

Entry entryOf(const std::string &text)
{
    Entry entry;
    entry.info.ai_socktype = SOCK_STREAM;
    if (text.find(':') == std::string::npos) {
        entry.info.ai_family = AF_INET;
        entry.info.ai_addrlen = sizeof(sockaddr_in);
        sockaddr_in in{};
        in.sin_family = AF_INET;
        std::memcpy(&in.sin_addr, support::ipv4(text).data(), 4);
        std::memcpy(&entry.address, &in, sizeof(in));
    } else {
        entry.info.ai_family = AF_INET6;
        entry.info.ai_addrlen = sizeof(sockaddr_in6);
        sockaddr_in6 in{};
        in.sin6_family = AF_INET6;
        std::memcpy(&in.sin6_addr, support::ipv6(text).data(), 16);
        std::memcpy(&entry.address, &in, sizeof(in));
    }
    return entry;
}

addrinfo *listOf(const std::vector<std::string> &texts)
{
    entries.clear();
    for (const std::string &text : texts) {
        entries.push_back(entryOf(text));
    }
    addrinfo *next = nullptr;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        entry->info.ai_addr = static_cast<sockaddr *>(static_cast<void *>(&entry->address));
        entry->info.ai_next = next;
        next = &entry->info;
    }
    return next;
}

} // namespace

extern "C" {
int __wrap_getaddrinfo(const char *host, const char *service, const addrinfo *hints,
                       addrinfo **list);
void __wrap_freeaddrinfo(addrinfo *list);

int __wrap_getaddrinfo(const char *host, const char *service, const addrinfo *hints,
                       addrinfo **list)
{
    ++resolver.asked;
    resolver.host = host;
    resolver.service = service;
    resolver.hints = *hints;
    if (resolver.error == 0) {
        resolver.given = *list = listOf(resolver.texts);
    }
    return resolver.error;
}

void __wrap_freeaddrinfo(addrinfo *list)
{
    EXPECT_EQ(list, resolver.given);
    ++resolver.freed;
}
}

namespace {

using ::testing::ElementsAre;

constexpr std::size_t textSize = 46;
const std::string longest = "2001:db8:1111:2222:3333:4444:5555:6666";

struct Text {
    support::Guarded bytes{textSize, 0xEE};

    char *get() const
    {
        return static_cast<char *>(static_cast<void *>(bytes.data()));
    }
    bool untouched() const
    {
        return std::ranges::all_of(bytes.bytes(), [](auto byte) { return byte == 0xEE; });
    }
};

class ResolverTest : public fake::FakePlatformTest {
protected:
    ResolverTest()
    {
        resolver = Resolver{};
    }
};

TEST_F(ResolverTest, IsAskedForStreamsToHttp)
{
    resolver.texts = {"10.0.0.1"};
    EXPECT_EQ(LIB_NW_ConverHostnameToIP("bmc.example", Text().get()), 0U);
    EXPECT_EQ(resolver.asked, 1);
    EXPECT_EQ(resolver.host, "bmc.example");
    EXPECT_EQ(resolver.service, "http");
    addrinfo expected{};
    expected.ai_socktype = SOCK_STREAM;
    EXPECT_EQ(support::toBytes(resolver.hints), support::toBytes(expected));
    EXPECT_EQ(resolver.freed, 1);

    EXPECT_EQ(LIB_NW_ParseHostnameToIP("bmc.example", "", Text().get()), 0U);
    EXPECT_EQ(resolver.asked, 2);
    EXPECT_EQ(resolver.host, "bmc.example");
    EXPECT_EQ(resolver.service, "http");
    EXPECT_EQ(support::toBytes(resolver.hints), support::toBytes(expected));
    EXPECT_EQ(resolver.freed, 2);
    EXPECT_TRUE(lines().empty());
}

struct Walk {
    std::string name;
    std::vector<std::string> list;
    std::string current;
    std::string plain;     // of the resolver that knows no current address
    std::string preferred; // of the one that does
};
class ResolvedText : public ResolverTest, public ::testing::WithParamInterface<Walk> {};

TEST_P(ResolvedText, RemainsFromTheWalk)
{
    const Walk &row = GetParam();
    resolver.texts = row.list;
    const Text plain, preferred;
    EXPECT_EQ(LIB_NW_ConverHostnameToIP("name", plain.get()), 0U);
    EXPECT_STREQ(plain.get(), row.plain.c_str());
    EXPECT_EQ(LIB_NW_ParseHostnameToIP("name", row.current.c_str(), preferred.get()), 0U);
    EXPECT_STREQ(preferred.get(), row.preferred.c_str());
    EXPECT_EQ(resolver.freed, 2);
    EXPECT_TRUE(lines().empty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, ResolvedText, ::testing::Values(
    Walk{"One",            {"10.0.0.1"}, "", "10.0.0.1", "10.0.0.1"},
    Walk{"LastWins",       {"10.0.0.1", "10.0.0.2", "10.0.0.3"}, "", "10.0.0.3", "10.0.0.3"},
    Walk{"Ipv6ThenIpv4",   {"2001:db8::1", "10.0.0.1"}, "", "10.0.0.1", "10.0.0.1"},
    Walk{"Ipv4ThenIpv6",   {"10.0.0.1", "2001:db8::1"}, "", "2001:db8::1", "2001:db8::1"},
    Walk{"Longest4",       {"255.255.255.255"}, "", "255.255.255.255", "255.255.255.255"},
    Walk{"Longest6",       {longest}, "", longest, longest},
    Walk{"FirstKept",      {"10.0.0.1", "10.0.0.2", "10.0.0.3"}, "10.0.0.1", "10.0.0.3", "10.0.0.1"},
    Walk{"MiddleKept",     {"10.0.0.1", "10.0.0.2", "10.0.0.3"}, "10.0.0.2", "10.0.0.3", "10.0.0.2"},
    Walk{"Ipv6Kept",       {"2001:db8::1", "10.0.0.1"}, "2001:db8::1", "10.0.0.1", "2001:db8::1"},
    Walk{"UnknownCurrent", {"10.0.0.1", "10.0.0.2"}, "10.0.0.9", "10.0.0.2", "10.0.0.2"},
    Walk{"CurrentPrefix",  {"10.0.0.1", "10.0.0.2"}, "10.0.0.11", "10.0.0.2", "10.0.0.2"},
    Walk{"OtherSpelling",  {"2001:db8::a", "10.0.0.2"}, "2001:DB8::A", "10.0.0.2", "10.0.0.2"},
    Walk{"ZeroIsNone",     {"0.0.0.0", "10.0.0.2"}, "0.0.0.0", "10.0.0.2", "10.0.0.2"},
    Walk{"Ipv6ZeroIsOne",  {"::", "10.0.0.2"}, "::", "10.0.0.2", "::"}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

TEST_F(ResolverTest, EmptyListLeavesTheTextUntouched)
{
    const Text plain, preferred;
    EXPECT_EQ(LIB_NW_ConverHostnameToIP("name", plain.get()), 0U);
    EXPECT_EQ(LIB_NW_ParseHostnameToIP("name", "10.0.0.1", preferred.get()), 0U);
    EXPECT_TRUE(plain.untouched());
    EXPECT_TRUE(preferred.untouched());
}

TEST_F(ResolverTest, FailureGoesToStandardError)
{
    for (const int error : {EAI_NONAME, EAI_AGAIN, EAI_SERVICE, EAI_MEMORY}) {
        const Text plain, preferred;
        resolver.error = error;
        testing::internal::CaptureStderr();
        EXPECT_EQ(LIB_NW_ConverHostnameToIP("name", plain.get()), 0x81000001U);
        EXPECT_EQ(LIB_NW_ParseHostnameToIP("name", "10.0.0.1", preferred.get()), 0x81000001U);
        const std::string line = "getaddrinfo: " + std::string(gai_strerror(error)) + "\n";
        EXPECT_EQ(testing::internal::GetCapturedStderr(), line + line);
        EXPECT_TRUE(plain.untouched());
        EXPECT_TRUE(preferred.untouched());
    }
    EXPECT_EQ(resolver.freed, 0);
    EXPECT_TRUE(lines().empty());
}

TEST_F(ResolverTest, NullsAreErrors)
{
    char text[textSize] = "";
    const char *const plain = "LIB_NW_ConverHostnameToIP";
    const char *const preferring = "LIB_NW_ParseHostnameToIP";
    EXPECT_EQ(LIB_NW_ConverHostnameToIP(nullptr, text), 0x81000002U);
    EXPECT_EQ(LIB_NW_ConverHostnameToIP("name", nullptr), 0x81000002U);
    EXPECT_EQ(LIB_NW_ConverHostnameToIP(nullptr, nullptr), 0x81000002U);
    EXPECT_EQ(LIB_NW_ParseHostnameToIP(nullptr, "", text), 0x81000002U);
    EXPECT_EQ(LIB_NW_ParseHostnameToIP("name", nullptr, text), 0x81000002U);
    EXPECT_EQ(LIB_NW_ParseHostnameToIP("name", "", nullptr), 0x81000002U);
    EXPECT_EQ(LIB_NW_ParseHostnameToIP("name", nullptr, nullptr), 0x81000002U);
    EXPECT_EQ(LIB_NW_ParseHostnameToIP(nullptr, nullptr, nullptr), 0x81000002U);
    EXPECT_THAT(
        lines(),
        ElementsAre(
            fake::isNullLine("pcHostname", plain), fake::isNullLine("pcIp", plain),
            fake::isNullLine("pcHostname", plain), fake::isNullLine("pcHostname", preferring),
            fake::isNullLine("pcCurIP", preferring), fake::isNullLine("pcIp", preferring),
            fake::isNullLine("pcCurIP", preferring), fake::isNullLine("pcHostname", preferring)));
    EXPECT_EQ(resolver.asked, 0);
}

} // namespace

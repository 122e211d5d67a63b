// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The resolvers on the system's own resolver, which reads a hosts file of the test's. Runs in the
// sandbox.
#include <array>
#include <netdb.h>

#include "bytes.hpp"
#include "fake_matchers.hpp"
#include "files.hpp"
#include "network_mng/check.h"

namespace {

const char *const hosts = "127.0.0.1 localhost\n"
                          "127.0.0.1 both\n"
                          "::1 both\n"
                          "192.0.2.7 single\n"
                          "2001:db8::7 six\n"
                          "127.0.0.1 several\n"
                          "127.0.0.2 several\n"
                          "127.0.0.3 several\n";

class SystemResolver : public fake::FakePlatformTest {
protected:
    static void SetUpTestSuite()
    {
        support::separateMounts();
        lay("/etc/hosts", hosts);
        lay("/etc/nsswitch.conf", "hosts: files\nservices: files\n");
        lay("/etc/services", "http 80/tcp\n");
        listed("both"); // libc reads its settings once and keeps them
    }
    ~SystemResolver() override
    {
        EXPECT_TRUE(lines().empty());
    }

    // Texts that the resolver lists for the name, in its order.
    static std::vector<std::string> listed(const std::string &name)
    {
        addrinfo hints{};
        hints.ai_socktype = SOCK_STREAM;
        addrinfo *list = nullptr;
        EXPECT_EQ(getaddrinfo(name.c_str(), "http", &hints, &list), 0);
        std::vector<std::string> texts;
        for (const addrinfo *entry = list; entry != nullptr; entry = entry->ai_next) {
            std::array<char, NI_MAXHOST> text{};
            getnameinfo(entry->ai_addr, entry->ai_addrlen, text.data(), text.size(), nullptr, 0,
                        NI_NUMERICHOST);
            texts.emplace_back(text.data());
        }
        freeaddrinfo(list);
        return texts;
    }
    static std::string resolved(const std::string &name)
    {
        std::array<char, 46> text{};
        EXPECT_EQ(LIB_NW_ConverHostnameToIP(name.c_str(), text.data()), 0U);
        return text.data();
    }
    static std::string resolved(const std::string &name, const std::string &current)
    {
        std::array<char, 46> text{};
        EXPECT_EQ(LIB_NW_ParseHostnameToIP(name.c_str(), current.c_str(), text.data()), 0U);
        return text.data();
    }

private:
    // The file stays where it is until the sandbox ends.
    static void lay(const std::string &target, const std::string &content)
    {
        const std::string source = "/run/" + std::filesystem::path(target).filename().string();
        support::writeFile(source, content);
        support::bindOver(source, target);
    }
};

TEST_F(SystemResolver, FindsNamesAndAddresses)
{
    EXPECT_EQ(resolved("single"), "192.0.2.7");
    EXPECT_EQ(resolved("six"), "2001:db8::7");
    EXPECT_EQ(resolved("198.51.100.9"), "198.51.100.9");
    EXPECT_EQ(resolved("2001:DB8:0::9"), "2001:db8::9");
}

TEST_F(SystemResolver, LastAddressWins)
{
    EXPECT_EQ(listed("both"), (std::vector<std::string>{"::1", "127.0.0.1"}));
    EXPECT_EQ(resolved("both"), "127.0.0.1");
    ASSERT_EQ(listed("several").size(), 3U);
    EXPECT_EQ(resolved("several"), listed("several").back());
}

TEST_F(SystemResolver, CurrentAddressIsKept)
{
    EXPECT_EQ(resolved("both", "::1"), "::1");
    EXPECT_EQ(resolved("both", "127.0.0.1"), "127.0.0.1");
    for (const std::string &text : listed("several")) {
        EXPECT_EQ(resolved("several", text), text);
    }
}

TEST_F(SystemResolver, OtherCurrentAddressIsNot)
{
    for (const char *current : {"", "0.0.0.0", "192.0.2.99", "::2", "localhost"}) {
        EXPECT_EQ(resolved("both", current), "127.0.0.1") << current;
    }
}

TEST_F(SystemResolver, UnknownNameIsExplainedOnStandardError)
{
    std::array<char, 46> text{"before"};
    testing::internal::CaptureStderr();
    EXPECT_EQ(LIB_NW_ConverHostnameToIP("nosuch.invalid", text.data()), 0x81000001U);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "getaddrinfo: Name or service not known\n");
    testing::internal::CaptureStderr();
    EXPECT_EQ(LIB_NW_ParseHostnameToIP("nosuch.invalid", "192.0.2.7", text.data()), 0x81000001U);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "getaddrinfo: Name or service not known\n");
    EXPECT_STREQ(text.data(), "before");
}

TEST_F(SystemResolver, LeavesNoDescriptorBehind)
{
    const int before = support::lowestFreeDescriptor();
    resolved("both");
    resolved("both", "::1");
    EXPECT_EQ(support::lowestFreeDescriptor(), before);
}

} // namespace

// The whole check against a second description of it, over many random records.
#include <random>

#include "fake_matchers.hpp"
#include "guarded.hpp"
#include "log_text.hpp"
#include "network_mng/check.h"
#include "segment_model.hpp"

namespace {

using support::Guarded;
using support::ipv4;
using support::ipv6;
using support::LanRecord;
using support::at::ipv4Route;
using support::at::ipv6Route;

// Few values, so that conflicts of every kind are common.
const support::Ipv4 addresses4[] = {ipv4("0.0.0.0"),     ipv4("10.1.2.3"),    ipv4("10.1.2.200"),
                                    ipv4("10.1.3.7"),    ipv4("10.2.0.1"),    ipv4("192.168.1.1"),
                                    ipv4("192.168.2.1"), ipv4("192.168.1.77")};
const support::Ipv4 masks4[] = {ipv4("0.0.0.0"),         ipv4("255.0.0.0"),
                                ipv4("255.255.0.0"),     ipv4("255.255.255.0"),
                                ipv4("255.255.255.128"), ipv4("255.255.255.255")};
const support::Ipv6 addresses6[] = {ipv6("::"),
                                    ipv6("2001:db8:1::1"),
                                    ipv6("fd00::1"),
                                    ipv6("2001:db8:2::1"),
                                    ipv6("2001:db8:1:8::2"),
                                    ipv6("2001:db8:1::2")};
const std::uint8_t prefixes[] = {0, 1, 7, 8, 15, 32, 45, 48, 64, 127, 128, 129, 200, 255};
const std::uint8_t flags[] = {0, 1, 1, 1, 2};

class RandomRecords {
public:
    explicit RandomRecords(std::uint32_t seed) : random_(seed) {}

    template <typename Pool>
    const auto &pick(const Pool &pool)
    {
        return pool[random_() % std::size(pool)];
    }
    std::uint32_t below(std::uint32_t end)
    {
        return static_cast<std::uint32_t>(random_() % end);
    }

    void fill(LanRecord &record)
    {
        for (std::size_t port = 0; port < 3; ++port) {
            fillPort(record.port(port));
        }
    }

private:
    void fillPort(support::PortEntry port)
    {
        using namespace support::at;
        for (const std::size_t flag : {ipv4Enable, ipv6Enable, ipv6Type, ipv4Route[0], ipv4Route[1],
                                       ipv6Route[0], ipv6Route[1]}) {
            port[flag] = pick(flags);
        }
        for (const std::size_t prefix :
             {ipv6Prefix, ipv6FurtherPrefix, ipv6Route[0] + 17, ipv6Route[1] + 17}) {
            port[prefix] = pick(prefixes);
        }
        for (const std::size_t mask : {ipv4Mask, ipv4Route[0] + 5, ipv4Route[1] + 5}) {
            std::ranges::copy(pick(masks4), &port[mask]);
        }
        for (const std::size_t address :
             {ipv4Addr, ipv4Route[0] + 1, ipv4Route[0] + 9, ipv4Route[1] + 1, ipv4Route[1] + 9}) {
            std::ranges::copy(pick(addresses4), &port[address]);
        }
        for (const std::size_t address : {ipv6Addr, ipv6Further, ipv6Route[0] + 1,
                                          ipv6Route[0] + 18, ipv6Route[1] + 1, ipv6Route[1] + 18}) {
            std::ranges::copy(pick(addresses6), &port[address]);
        }
    }

    std::mt19937 random_;
};

class SegmentModel : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(SegmentModel, AnswersAndSpeaksAsTheModelDoes)
{
    RandomRecords random(GetParam());
    std::map<std::uint32_t, std::size_t> seen;
    LanRecord record;
    const Guarded guarded(support::kLanRecordSize);
    const Guarded guardedWifi(5);

    for (int round = 0; round < 55000; ++round) {
        random.fill(record);
        support::Wifi wifi{random.pick(flags), random.pick(addresses4)};
        const std::uint32_t standby = random.below(8) == 0 ? random.below(3) : 0;
        const std::uint32_t portSet = random.below(2) == 0 ? 7 : random.below(16);
        const std::uint32_t checkType = random.below(16);
        std::ranges::copy(record.bytes(), guarded.data());
        guardedWifi.data()[0] = wifi.enable;
        std::ranges::copy(wifi.address, guardedWifi.data() + 1);

        fake::platform().reset();
        const std::uint32_t result = LIB_NW_CheckIPv4v6SameSegment(
            standby, portSet, checkType, guardedWifi.as<NW_WIFI_ADDR_S>(),
            guarded.as<NW_LAN_CFG_DB_INFO_S>());
        const auto expected = support::sameSegment(standby, portSet, checkType, wifi, record);

        ASSERT_EQ(result, expected.result) << "round " << round;
        ASSERT_EQ(support::loggedLines(), support::debugLines(expected.lines)) << "round " << round;
        ++seen[result];
    }
    EXPECT_EQ(seen.size(), 11U) << "a verdict that the records never produced proves nothing";
}

INSTANTIATE_TEST_SUITE_P(Seeds, SegmentModel, ::testing::Values(1U, 2U, 3U, 4U));

} // namespace

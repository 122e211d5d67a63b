// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Taking down VLAN sub-interfaces: what is read, traced and run, in this order.
#include "lan_record.hpp"
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::size_t vlanOffset = 783; /* in a port's entry */

Bytes lanRecord(const std::array<std::uint16_t, 3> &vlans)
{
    Bytes record(support::kLanRecordSize, setters::poison);
    for (std::size_t port = 0; port < vlans.size(); ++port) {
        const std::size_t offset = 4 + support::kPortEntrySize * port + vlanOffset;
        record[offset] = static_cast<std::uint8_t>(vlans[port]);
        record[offset + 1] = static_cast<std::uint8_t>(vlans[port] >> 8);
    }
    return record;
}

std::vector<std::string> commands()
{
    std::vector<std::string> texts;
    for (const fake::Call &call : fake::platform().callsTo("BMC_SafeSystem")) {
        texts.push_back(call.text);
    }
    return texts;
}

fake::LineMatcher trace(const char *format, int value)
{
    return fake::isLine(fake::networkUnit, fake::ifcTrace, format, value);
}
fake::LineMatcher stateTrace(int mode)
{
    return trace("ucIfcState:%d.", mode);
}
fake::LineMatcher vlanTrace(int id)
{
    return trace("usVlanid:%d.", id);
}

class VlanTest : public fake::FakePlatformTest {
protected:
    void install(std::uint8_t mode, const std::array<std::uint16_t, 3> &vlans)
    {
        platform.setRecord(NW_KEY_IFC_STATE, support::ifcRecord(mode));
        platform.setRecord(NW_KEY_LAN_CFG, lanRecord(vlans));
    }
};

struct Row {
    std::string name;
    std::uint32_t port;
    std::uint8_t mode;
    std::array<std::uint16_t, 3> vlans;
    int traced;
    std::vector<std::string> commands;
};

class Vlan : public VlanTest, public testing::WithParamInterface<Row> {};

TEST_P(Vlan, IsTakenDown)
{
    const Row &row = GetParam();
    install(row.mode, row.vlans);

    NW_DisableVlan(row.port);

    EXPECT_EQ(commands(), row.commands);
    EXPECT_THAT(lines(), ElementsAre(stateTrace(row.mode), vlanTrace(row.traced)));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Ports, Vlan, testing::Values(
    Row{"First",         0, 0, {100, 200, 300}, 100, {"vconfig rem eth0.100"}},
    Row{"Second",        1, 0, {100, 200, 300}, 200, {"vconfig rem eth1.200"}},
    Row{"FirstHasNone",  0, 0, {0, 200, 300},   0,   {}},
    Row{"SecondHasNone", 1, 0, {100, 0, 300},   0,   {}},
    Row{"OneByteIds",    1, 0, {0, 1, 0},       1,   {"vconfig rem eth1.1"}},
    Row{"HighByteAlone", 0, 0, {0x100, 0, 0},   256, {"vconfig rem eth0.256"}},
    Row{"Largest",       1, 0, {0, 65535, 0},   65535, {"vconfig rem eth1.65535"}},
    // Both ports name the bond, each with the VLAN of its own.
    Row{"BondedFirst",   0, 1, {100, 200, 300}, 100, {"vconfig rem bond0.100"}},
    Row{"BondedSecond",  1, 1, {100, 200, 300}, 200, {"vconfig rem bond0.200"}},
    Row{"BondedNone",    1, 1, {100, 0, 300},   0,   {}},
    Row{"BondedLargest", 0, 1, {65535, 0, 0},   65535, {"vconfig rem bond0.65535"}},
    // Any mode but 0 names the bond.
    Row{"Mode2",         0, 2, {100, 200, 300}, 100, {"vconfig rem bond0.100"}},
    Row{"Mode255",       1, 255, {100, 200, 300}, 200, {"vconfig rem bond0.200"}}),
    fake::RowName());
/* clang-format on */

TEST_F(VlanTest, OpensTheDatabaseOnceForBothRecords)
{
    install(0, {100, 200, 300});

    NW_DisableVlan(1);

    EXPECT_THAT(platform.callNames(),
                ElementsAre("DB_Open", "DB_GetCurrentDb", "DB_Get", "BMC_DiagLogOut", "DB_Get",
                            "BMC_DiagLogOut", "BMC_SafeSystem"));
    EXPECT_EQ(platform.callsTo("DB_GetCurrentDb")[0].handle, platform.environment());
    const auto reads = setters::databaseReads();
    EXPECT_EQ(reads[0].key, NW_KEY_IFC_STATE);
    EXPECT_EQ(reads[0].data, Bytes(84)) << "not read into a zeroed record";
    EXPECT_EQ(reads[1].key, NW_KEY_LAN_CFG);
    EXPECT_EQ(reads[1].size, support::kLanRecordSize);
    EXPECT_EQ(reads[0].handle, platform.database());
    EXPECT_EQ(reads[1].handle, platform.database());
}

TEST_F(VlanTest, IgnoresHowTheCommandEnded)
{
    install(0, {100, 200, 300});
    platform.setCommandStatus(127);

    NW_DisableVlan(0);

    EXPECT_THAT(commands(), ElementsAre("vconfig rem eth0.100"));
    EXPECT_THAT(lines(), ElementsAre(stateTrace(0), vlanTrace(100)));
}

TEST_F(VlanTest, TakesBothPortsDownInOrder)
{
    install(0, {100, 200, 300});

    NW_DealVlan();

    EXPECT_THAT(commands(), ElementsAre("vconfig rem eth0.100", "vconfig rem eth1.200"));
    EXPECT_THAT(lines(), ElementsAre(stateTrace(0), vlanTrace(100), stateTrace(0), vlanTrace(200)));
    EXPECT_EQ(platform.callsTo("DB_Open").size(), 2U);
}

TEST_F(VlanTest, HasNoEffectAboveTheLastPort)
{
    for (const std::uint8_t mode : Bytes{0, 1}) {
        for (const std::uint32_t port : {3U, 4U, 0x80000000U, 0xFFFFFFFFU}) {
            install(mode, {100, 200, 300});
            platform.clearCalls();

            NW_DisableVlan(port);

            EXPECT_THAT(commands(), IsEmpty()) << port;
        }
    }
}

/* ---- Failures ---- */

struct Failure {
    std::string name;
    std::function<void(fake::Platform &)> script;
    std::vector<fake::LineMatcher> lines;
};

class VlanFailure : public VlanTest, public testing::WithParamInterface<Failure> {};

TEST_P(VlanFailure, IsOneLineAndNothingIsRun)
{
    for (const std::uint32_t port : {0U, 1U}) {
        install(0, {100, 200, 300});
        GetParam().script(platform);
        platform.clearCalls();

        NW_DisableVlan(port);

        EXPECT_THAT(lines(), ElementsAreArray(GetParam().lines));
        EXPECT_THAT(commands(), IsEmpty());
    }
}

TEST_P(VlanFailure, OfTheFirstPortDoesNotKeepTheSecondFromItsTurn)
{
    install(0, {100, 200, 300});
    GetParam().script(platform);
    std::vector<fake::LineMatcher> twice = GetParam().lines;
    twice.insert(twice.end(), GetParam().lines.begin(), GetParam().lines.end());

    NW_DealVlan();

    EXPECT_THAT(lines(), ElementsAreArray(twice));
    EXPECT_THAT(commands(), IsEmpty());
}

template <typename... Arguments>
fake::LineMatcher failed(const char *format, Arguments... arguments)
{
    return fake::isLine(fake::networkUnit, fake::ifcFail, format, arguments...);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Failures, VlanFailure, testing::Values(
    Failure{"NoEnvironment", [](auto &platform) { platform.failOpen(); }, {failed("Failed to open lmdb database.")}},
    Failure{"NoDatabase", [](auto &platform) { platform.failCurrentDb(); },
            {failed("Failed to get interface state lmdb information!\n")}},
    Failure{"NoState", [](auto &platform) { platform.failGet(NW_KEY_IFC_STATE, 5); },
            {failed("Get interface state info failed!\n")}},
    Failure{"NoConfiguration", [](auto &platform) { platform.failGet(NW_KEY_LAN_CFG, -30798); },
            {stateTrace(0), failed("Get lancfg info failed, Ret:%d", -30798)}}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

} // namespace

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The shared-link mode: two changes in the order that the mode asks for, and the mode in force.
#include "lan_record.hpp"
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

using Lines = std::vector<fake::LineMatcher>;

Bytes modeRequest(std::uint8_t mode)
{
    return setters::requestOf(4, {0, 0, 0, 0, 1, mode, 0, 0});
}

/* LAN of port 1 and nothing else. */
Bytes lanRequest(std::uint8_t enable)
{
    Bytes payload(506);
    payload[4 + 8] = 1;
    payload[28 + 163] = enable;
    return setters::requestOf(3, payload);
}

Lines operator+(Lines first, const Lines &second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// The texts are discarded, but their lines are not.
Lines modeLines(const std::string &mode)
{
    return {setters::operLogLine(
        "Configured network port mode successfully, network port mode: " + mode + ".")};
}
Lines lanLines(const std::string &state)
{
    const std::string text =
        "LAN settings configured successfully for shared port, LAN: " + state + ".";
    return {setters::operLogLine(""), setters::operLogLine(text), setters::operLogLine(text)};
}

const fake::LineMatcher stepFailed = fake::isErrorLine("ChangeNetMode Failed!");

Lines failedModeLines(std::uint32_t result)
{
    return {setters::failureLine(setters::named("NetMode"), result),
            setters::operLogLine("Failed to configure the network port mode."), stepFailed,
            setters::codeLine("change net mode failed, Ret = %d", 0x81000001U)};
}
Lines failedLanLines(const std::string &port)
{
    return {fake::isErrorLine("BMC_RPC_CallWithStruct Failed when setting lancfg!"),
            setters::operLogLine("Failed to configure LAN settings for " + port + "."), stepFailed,
            setters::codeLine("change eth1 lan mode failed, Ret = %d", 0x81000001U)};
}

struct Row {
    std::string name;
    std::uint8_t mode;
    std::vector<fake::RpcAnswer> answers;
    std::uint32_t result;
    std::vector<Bytes> requests;
    Lines lines;
};

class ShareLinkChange : public fake::FakePlatformRows<Row> {};

TEST_P(ShareLinkChange, SendsItsStepsUntilOneFails)
{
    const Row &row = GetParam();
    for (const fake::RpcAnswer &answer : row.answers) {
        platform.answerRpc(answer);
    }

    EXPECT_EQ(LIB_NW_ChangeShareLinkMode(row.mode), row.result);

    EXPECT_EQ(setters::sentRequests(), row.requests);
    EXPECT_THAT(lines(), ElementsAreArray(row.lines));
    EXPECT_THAT(setters::databaseReads(), IsEmpty());
}

/* clang-format off */
const auto done = fake::RpcAnswer::response(0, 1);
const auto refused = fake::RpcAnswer::response(0x1E000031, 1);
const auto lost = fake::RpcAnswer::failure(-110);
constexpr std::uint32_t failed = 0x81000001;
const Lines invalid = {fake::isErrorLine("Set ncsi config failed, ucdate error.")};
INSTANTIATE_TEST_SUITE_P(Modes, ShareLinkChange, testing::Values(
    Row{"Dedicated", 0, {done}, 0, {modeRequest(0), lanRequest(0)}, modeLines("Normal") + lanLines("Disabled")},
    Row{"Shared",    1, {done}, 0, {modeRequest(0), lanRequest(1)}, modeLines("Normal") + lanLines("Enabled")},
    // The port is enabled before the bond is formed.
    Row{"Standby",   2, {done}, 0, {lanRequest(1), modeRequest(1)}, lanLines("Enabled") + modeLines("Active/standby")},
    Row{"Mode3",     3,   {done}, failed, {}, invalid},
    Row{"Mode255",   255, {done}, failed, {}, invalid},
    Row{"DedicatedModeRefused", 0, {refused}, failed, {modeRequest(0)}, failedModeLines(0x1E000031)},
    Row{"SharedModeRefused",    1, {refused}, failed, {modeRequest(0)}, failedModeLines(0x1E000031)},
    Row{"SharedModeLost",       1, {lost}, failed, {modeRequest(0)}, failedModeLines(setters::transportFailed)},
    Row{"DedicatedLanRefused",  0, {done, refused}, failed, {modeRequest(0), lanRequest(0)},
        modeLines("Normal") + failedLanLines("shared port")},
    Row{"SharedLanRefused",     1, {done, refused}, failed, {modeRequest(0), lanRequest(1)},
        modeLines("Normal") + failedLanLines("shared port")},
    Row{"SharedLanLost",        1, {done, lost}, failed, {modeRequest(0), lanRequest(1)},
        modeLines("Normal") + failedLanLines("dedicated port")},
    Row{"StandbyLanRefused",    2, {refused}, failed, {lanRequest(1)}, failedLanLines("shared port")},
    Row{"StandbyModeRefused",   2, {done, refused}, failed, {lanRequest(1), modeRequest(1)},
        lanLines("Enabled") + failedModeLines(0x1E000031)},
    Row{"StandbyModeLost",      2, {done, lost}, failed, {lanRequest(1), modeRequest(1)},
        lanLines("Enabled") + failedModeLines(setters::transportFailed)}),
    fake::RowName());
/* clang-format on */

/* ---- The mode in force ---- */

constexpr std::uint8_t untouched = 0x77;

class ShareLinkTest : public fake::FakePlatformTest {
protected:
    void install(std::uint8_t mode, std::uint8_t lanEnable, const std::string &name = "eth1")
    {
        Bytes state = support::ifcRecord(mode);
        std::ranges::fill(std::span(state).subspan(35 + 16, 16), std::uint8_t{0});
        support::putText(state, 35 + 16, name);
        platform.setRecord(NW_KEY_IFC_STATE, state);
        support::LanRecord lan;
        lan.port(0)[support::at::lanEnable] = lanEnable == 1 ? 0 : 1;
        lan.port(1)[support::at::lanEnable] = lanEnable;
        lan.port(2)[support::at::lanEnable] = lanEnable == 1 ? 0 : 1;
        platform.setRecord(NW_KEY_LAN_CFG, lan.bytes());
        platform.setWireless(false, "");
    }

    struct Answer {
        std::uint32_t result;
        std::uint8_t mode;
    };
    static Answer getMode()
    {
        const support::Guarded mode(1, untouched);
        const std::uint32_t result = LIB_NW_GetShareLinkMode(mode.data());
        return {result, *mode.data()};
    }
    std::vector<std::uint32_t> keysRead() const
    {
        std::vector<std::uint32_t> keys;
        for (const fake::Call &call : setters::databaseReads()) {
            keys.push_back(call.key);
        }
        return keys;
    }
};

struct ModeRow {
    std::string name;
    std::uint8_t netMode, lanEnable;
    std::uint8_t mode;
    std::vector<std::uint32_t> keys; /* of the records read */
};

class ShareLinkMode : public ShareLinkTest, public testing::WithParamInterface<ModeRow> {};

TEST_P(ShareLinkMode, FollowsFromTheNetworkModeAndTheSecondPort)
{
    const ModeRow &row = GetParam();
    install(row.netMode, row.lanEnable);

    const auto [result, mode] = getMode();

    EXPECT_EQ(result, 0U);
    EXPECT_EQ(mode, row.mode);
    EXPECT_EQ(keysRead(), row.keys);
}

/* clang-format off */
const std::vector<std::uint32_t> stateAlone = {NW_KEY_IFC_STATE};
const std::vector<std::uint32_t> withLan = {NW_KEY_IFC_STATE, NW_KEY_IFC_STATE, NW_KEY_LAN_CFG};
INSTANTIATE_TEST_SUITE_P(Modes, ShareLinkMode, testing::Values(
    ModeRow{"Dedicated",   0,   0,   0, withLan},
    ModeRow{"Shared",      0,   1,   1, withLan},
    ModeRow{"LanByteTwo",  0,   2,   0, withLan},
    ModeRow{"LanByteFull", 0,   255, 0, withLan},
    // The LAN configuration is not asked for.
    ModeRow{"Standby",     1,   1,   2, stateAlone},
    ModeRow{"StandbyLanOff", 1, 0,   2, stateAlone},
    ModeRow{"Mode2",       2,   1,   0, stateAlone},
    ModeRow{"Mode255",     255, 1,   0, stateAlone}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

TEST_F(ShareLinkTest, AsksForThePortByItsStoredName)
{
    install(0, 1, "lan-b");

    const auto [result, mode] = getMode();

    EXPECT_EQ(result, 0U);
    EXPECT_EQ(mode, 1U);
}

// A name that fills its field is sixteen characters, whatever follows it.
TEST_F(ShareLinkTest, BoundsANameWithoutTerminator)
{
    install(0, 1, "sixteen-letters!");
    platform.failGet(NW_KEY_LAN_CFG, 5);

    const auto [result, mode] = getMode();

    EXPECT_EQ(result, 0x81000001U);
    EXPECT_EQ(mode, untouched);
    EXPECT_THAT(lines().back(), fake::isErrorLine("Failed to get eth1 info, IfcName:%s iRet:%#x",
                                                  "sixteen-letters!", 0x81000006U));
}

TEST_F(ShareLinkTest, FindsThePortByANameWithoutTerminator)
{
    install(0, 1, "sixteen-letters!");

    const auto [result, mode] = getMode();

    EXPECT_EQ(result, 0U);
    EXPECT_EQ(mode, 1U);
}

/* ---- Failures ---- */

struct Failure {
    std::string name;
    std::function<void(fake::Platform &)> script;
    const char *line;
};

class NoShareLinkMode : public ShareLinkTest, public testing::WithParamInterface<Failure> {};

TEST_P(NoShareLinkMode, LeavesTheOutput)
{
    install(0, 1);
    GetParam().script(platform);

    const auto [result, mode] = getMode();

    EXPECT_EQ(result, 0x81000001U);
    EXPECT_EQ(mode, untouched);
    EXPECT_THAT(lines(),
                ElementsAre(fake::isLine(fake::networkUnit, fake::ifcFail, GetParam().line),
                            fake::isLine(fake::networkUnit, fake::ifcFail,
                                         "Failed to get interface state info."),
                            fake::isErrorLine("Failed to get interface state")));
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Failures, NoShareLinkMode, testing::Values(
    Failure{"NoEnvironment", [](auto &platform) { platform.failOpen(); }, "Failed to open lmdb database."},
    Failure{"NoDatabase", [](auto &platform) { platform.failCurrentDb(); },
            "Failed to get interface state lmdb information!\n"},
    Failure{"NoState", [](auto &platform) { platform.failGet(NW_KEY_IFC_STATE, 5, Bytes(84, 1)); },
            "Get interface state info failed!\n"}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

TEST_F(ShareLinkTest, LeavesTheOutputWhenThePortCannotBeRead)
{
    install(0, 1);
    platform.failGet(NW_KEY_LAN_CFG, -7, Bytes(2377, 1));

    const auto [result, mode] = getMode();

    EXPECT_EQ(result, 0x81000001U);
    EXPECT_EQ(mode, untouched);
    EXPECT_THAT(lines(),
                ElementsAre(fake::isErrorLine("Get lancfg info failed, Ret:%d", -7),
                            fake::isErrorLine("Get lan config info from LMDB failed."),
                            fake::isErrorLine("Failed to get eth1 info, IfcName:%s iRet:%#x",
                                              "eth1", 0x81000006U)));
}

} // namespace

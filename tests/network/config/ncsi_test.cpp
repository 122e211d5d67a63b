// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// NC-SI: what must hold before it is enabled, and when it has come up.
#include <optional>

#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

const std::string initPath = "/proc/sys/tollmere/ncsi/InitComplete";
const std::string enablePath = "/proc/sys/tollmere/ncsi/Enable";

class NcsiTest : public fake::FakePlatformTest {
protected:
    void install(std::uint8_t status, const std::optional<Bytes> &init)
    {
        platform.setRecord(NW_KEY_NET_STATUS, Bytes{status});
        if (init) {
            platform.setProc(initPath, *init);
        }
    }
};

struct Row {
    std::string name;
    std::uint8_t status;
    std::optional<Bytes> init;
    std::uint32_t result;
    std::vector<std::string> calls; /* behind the status */
    const char *line;               /* null: none */
};

class NcsiEnable : public NcsiTest, public testing::WithParamInterface<Row> {};

TEST_P(NcsiEnable, LooksAtTheStatusAndTheFlag)
{
    const Row &row = GetParam();
    install(row.status, row.init);

    EXPECT_EQ(LIB_NW_EnableNcsi(), row.result);

    std::vector<std::string> calls = {"DB_Open", "DB_GetCurrentDb", "DB_Get"};
    calls.insert(calls.end(), row.calls.begin(), row.calls.end());
    EXPECT_EQ(platform.callNames(), calls);
    if (row.line == nullptr) {
        EXPECT_THAT(lines(), IsEmpty());
        EXPECT_EQ(platform.proc(enablePath), Bytes{'1'});
    } else {
        EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine(row.line)));
        EXPECT_EQ(platform.proc(enablePath), std::nullopt);
    }
}

/* clang-format off */
const std::vector<std::string> written = {"NW_ReadProc", "NW_WriteProc"};
const std::vector<std::string> readOnly = {"NW_ReadProc", "BMC_DiagLogOut"};
const std::vector<std::string> notAsked = {"BMC_DiagLogOut"};
const char *const busy = "Netstatus In Progress.";
const char *const notReady = "Ncsi Not InitComplete.";
INSTANTIATE_TEST_SUITE_P(Rows, NcsiEnable, testing::Values(
    Row{"Ready",          0,   Bytes{'1'},       0, written, nullptr},
    // Only 1 means busy.
    Row{"Status2",        2,   Bytes{'1'},       0, written, nullptr},
    Row{"Status255",      255, Bytes{'1'},       0, written, nullptr},
    Row{"Busy",           1,   Bytes{'1'},       0x81000001, notAsked, busy},
    Row{"BusyAndNotReady", 1,  Bytes{'0'},       0x81000001, notAsked, busy},
    Row{"NotReady",       0,   Bytes{'0'},       0x81000001, readOnly, notReady},
    Row{"NoFlag",         0,   {},               0x81000001, readOnly, notReady},
    Row{"BinaryOne",      0,   Bytes{1},         0x81000001, readOnly, notReady},
    Row{"Two",            0,   Bytes{'2'},       0x81000001, readOnly, notReady},
    Row{"EmptyFlag",      0,   Bytes{},          0x81000001, readOnly, notReady},
    // One character is read, whatever follows.
    Row{"ReadyAndMore",   0,   Bytes{'1', '0'},  0, written, nullptr},
    Row{"NotReadyAndMore", 0,  Bytes{'0', '1'},  0x81000001, readOnly, notReady}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

TEST_F(NcsiTest, IsEnabledWithOneCharacter)
{
    install(0, Bytes{'1'});

    LIB_NW_EnableNcsi();

    const fake::Call read = platform.callsTo("NW_ReadProc").at(0);
    EXPECT_EQ(read.text, initPath);
    EXPECT_EQ(read.size, 1U);
    const fake::Call write = platform.callsTo("NW_WriteProc").at(0);
    EXPECT_EQ(write.text, enablePath);
    EXPECT_EQ(write.size, 1U);
    EXPECT_EQ(write.data, Bytes{'1'});
}

TEST_F(NcsiTest, IgnoresAFailedWrite)
{
    install(0, Bytes{'1'});
    platform.failProcWrite(enablePath, -13);

    EXPECT_EQ(LIB_NW_EnableNcsi(), 0U);

    EXPECT_THAT(lines(), IsEmpty());
}

// As the network manager would see it: a status that was put is what refuses.
TEST_F(NcsiTest, IsRefusedWhileASetIsMarked)
{
    platform.setProc(initPath, {'1'});
    EXPECT_EQ(NW_LMDB_Put_NetStatus(1), 0U);
    EXPECT_EQ(LIB_NW_EnableNcsi(), 0x81000001U);

    EXPECT_EQ(NW_LMDB_Put_NetStatus(0), 0U);
    EXPECT_EQ(LIB_NW_EnableNcsi(), 0U);
}

/* ---- Status that cannot be read ---- */

struct Failure {
    std::string name;
    std::function<void(fake::Platform &)> script;
    std::uint32_t result;
    fake::LineMatcher line;
};

class NcsiFailure : public NcsiTest, public testing::WithParamInterface<Failure> {};

TEST_P(NcsiFailure, IsAnsweredWithTheAccessorsCode)
{
    install(0, Bytes{'1'});
    GetParam().script(platform);

    EXPECT_EQ(LIB_NW_EnableNcsi(), GetParam().result);

    EXPECT_THAT(lines(),
                ElementsAre(GetParam().line, fake::isErrorLine("Get netstatus from lmdb failed.")));
    EXPECT_THAT(platform.callsTo("NW_ReadProc"), IsEmpty());
    EXPECT_THAT(platform.callsTo("NW_WriteProc"), IsEmpty());
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Failures, NcsiFailure, testing::Values(
    Failure{"NoEnvironment", [](auto &platform) { platform.failOpen(); }, 0x81000005,
            fake::isErrorLine("Failed to open lmdb database.")},
    Failure{"NoDatabase", [](auto &platform) { platform.failCurrentDb(); }, 0x81000005,
            fake::isErrorLine("Failed to create LMDB environment.")},
    Failure{"NoRecord", [](auto &platform) { platform.failGet(NW_KEY_NET_STATUS, -3); }, 0x81000006,
            fake::isErrorLine("Get net status  info failed, Ret:%d", -3)}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

/* ---- Initialisation ---- */

struct InitRow {
    std::string name;
    std::optional<Bytes> init;
    std::uint32_t result;
    bool logged;
};

class NcsiInit : public NcsiTest, public testing::WithParamInterface<InitRow> {};

TEST_P(NcsiInit, IsCompleteOnlyForTheCharacterOne)
{
    if (GetParam().init) {
        platform.setProc(initPath, *GetParam().init);
    }

    EXPECT_EQ(LIB_NW_NcsiIsInitComplete(), GetParam().result);

    if (GetParam().logged) {
        EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("NW_ReadProc failed.")));
    } else {
        EXPECT_THAT(lines(), IsEmpty());
    }
    const fake::Call read = platform.callsTo("NW_ReadProc").at(0);
    EXPECT_EQ(read.text, initPath);
    EXPECT_EQ(read.size, 1U);
    EXPECT_EQ(platform.calls().size(), GetParam().logged ? 2U : 1U);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Flags, NcsiInit, testing::Values(
    InitRow{"One",       Bytes{'1'}, 1, false},
    InitRow{"OneLine",   Bytes{'1', '\n'}, 1, false},
    InitRow{"Zero",      Bytes{'0'}, 0, false},
    InitRow{"Two",       Bytes{'2'}, 0, false},
    InitRow{"BinaryOne", Bytes{1},   0, false},
    InitRow{"Missing",   {},         0, true}),
    [](const auto &row) { return row.param.name; });
/* clang-format on */

} // namespace

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The readers: every failure of each with its code, lines, order of platform calls and what it
 * leaves untouched. */
#include <numeric>

#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using fake::Bytes;
using fake::LineMatcher;
using fake::Shape;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::uint8_t poison = 0xA5;
constexpr std::uint32_t ownCode = 0; /* the database's own code is answered */

/* How the record reaches the caller. */
enum class Copy { buffered, straight };
/* What DB_GetCurrentDb is asked with. */
enum class Handle { environment, argument, localRecord };

struct Reader {
    std::string name;
    std::uint32_t (*read)(void *record);
    std::uint32_t key;
    std::uint32_t size;
    Copy copy;
    Handle handle;
    Shape shape;
    std::uint32_t noEnvironmentCode; /* 0: nothing is opened */
    const char *noDatabaseText;
    std::uint32_t noDatabaseCode;
    const char *readText; /* may print the database's code */
    std::uint32_t readCode;
    const char *secondText; /* behind every database failure, null: none */
};

template <typename Record, std::uint32_t (*accessor)(Record *)>
std::uint32_t read(void *record)
{
    return accessor(static_cast<Record *>(record));
}

constexpr const char *noEnvironmentText = "Failed to open lmdb database.";
constexpr const char *noDatabase = "Failed to create LMDB environment.";

/* clang-format off */
const Reader readers[] = {
    {"NetStatus", read<std::uint8_t, NW_LMDB_Get_NetStatus>, 0x10610006, 1,
     Copy::buffered, Handle::environment, fake::error,
     0x81000005, noDatabase, 0x81000005,
     "Get net status  info failed, Ret:%d", 0x81000006, nullptr},
    {"Dns", read<NW_DNS_DB_INFO_S, NW_LMDB_Get_DNS>, 0x10610001, 1776,
     Copy::buffered, Handle::environment, fake::error,
     0x81000005, noDatabase, 0x81000005,
     "Get dns info failed, Ret:%d", 0x81000006, nullptr},
    {"Lldp", read<NW_LLDP_DB_INFO_S, NW_LMDB_Get_LLDP>, 0x10610002, 604,
     Copy::buffered, Handle::environment, fake::error,
     0x81000001, noDatabase, 0x81000005,
     "Get lldp info failed, Ret:%d", 0x81000006, nullptr},
    {"LanCfg", read<NW_LAN_CFG_DB_INFO_S, NW_LMDB_GetLanCfgInfo>, 0x10610003, 2377,
     Copy::straight, Handle::environment, fake::error,
     0x81000001, noDatabase, 0x81000005,
     "Get lancfg info failed, Ret:%d", 0x81000006, nullptr},
    {"IfcState", read<NW_IFC_STATE_DB_INFO_S, NW_LMDB_Get_IfcState>, 0x10610007, 84,
     Copy::buffered, Handle::environment, fake::ifcFail,
     0x81000001, "Failed to get interface state lmdb information!\n", 0x81000001,
     "Get interface state info failed!\n", ownCode, nullptr},
    {"AnCfg", read<NW_AN_CFG_DB_INFO_S, NW_LMDB_GetAnCfgInfo>, 0x1061000B, 21,
     Copy::straight, Handle::environment, fake::error,
     0x81000001, noDatabase, 0x81000005,
     "Get Ancfg info failed, Ret:%d", 0x81000006, nullptr},
    {"Ncsi", read<NW_NCSI_DB_INFO_S, NW_LMDB_Get_NCSI>, 0x10610005, 192,
     Copy::buffered, Handle::argument, fake::error,
     0, "Failed to get ncsi lmdb information!\n", 0x81000001,
     "Get ncsi info failed!\n", ownCode, nullptr},
    {"NcsiConfig", read<NW_NCSI_DB_INFO_S, LIB_NW_GetNcsiConfig>, 0x10610005, 192,
     Copy::buffered, Handle::localRecord, fake::error,
     0, "Failed to get ncsi lmdb information!\n", 0x81000001,
     "Get ncsi info failed!\n", ownCode, "Get ncsi info failed!\n"},
    {"HostName", read<NW_HOSTNAME_DB_INFO_S, LIB_NW_GetHostName>, 0x10610000, 260,
     Copy::buffered, Handle::environment, fake::error,
     0x81000001, noDatabase, 0x81000005,
     "Get hostname info failed, Ret:%d", 0x81000006, "Failed to get hostname info!"},
};
/* clang-format on */

/* The caller's record, exactly as large as it must be, in front of it the bytes that misalign it.
 */
struct Buffer {
    Buffer(std::size_t size, std::size_t misalignment)
        : lead(misalignment), bytes(lead + size, poison)
    {
    }

    std::uint8_t *record()
    {
        return bytes.data() + lead;
    }
    Bytes contents() const
    {
        return Bytes(bytes.begin() + static_cast<long>(lead), bytes.end());
    }

    Bytes leadBytes() const
    {
        return Bytes(bytes.begin(), bytes.begin() + static_cast<long>(lead));
    }

    std::size_t lead;
    Bytes bytes;
};

Bytes counted(std::size_t size)
{
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}

class ReaderTest : public fake::FakePlatformRows<Reader> {
protected:
    LineMatcher line(const char *format, int code = 0) const
    {
        return fake::isLine(fake::networkUnit, GetParam().shape, format, code);
    }

    /* The lines of a database failure. */
    void expectLines(LineMatcher first) const
    {
        std::vector<LineMatcher> expected{first};
        if (GetParam().secondText != nullptr) {
            expected.push_back(fake::isErrorLine(GetParam().secondText));
        }
        EXPECT_THAT(lines(), ElementsAreArray(expected));
    }

    /* The database calls in order, log lines left out. */
    void expectDatabaseCalls(std::vector<std::string> expected) const
    {
        if (GetParam().noEnvironmentCode != 0) {
            expected.insert(expected.begin(), "DB_Open");
        }
        std::vector<std::string> made;
        for (const std::string &name : platform.callNames()) {
            if (name != "BMC_DiagLogOut") {
                made.push_back(name);
            }
        }
        EXPECT_EQ(made, expected);
    }

    void expectCurrentDbHandle(const void *record) const
    {
        const void *handle = platform.callsTo("DB_GetCurrentDb").front().handle;
        switch (GetParam().handle) {
        case Handle::environment:
            EXPECT_EQ(handle, platform.environment());
            break;
        case Handle::argument:
            EXPECT_EQ(handle, record);
            break;
        case Handle::localRecord:
            EXPECT_NE(handle, nullptr);
            EXPECT_NE(handle, platform.environment());
            EXPECT_NE(handle, record);
            break;
        }
    }
};

TEST_P(ReaderTest, CopiesTheRecordAtAnyAlignment)
{
    const Reader &reader = GetParam();
    for (const std::size_t misalignment : {0U, 1U, 2U, 3U}) {
        platform.clearCalls();
        platform.setRecord(reader.key, counted(reader.size));
        Buffer buffer(reader.size, misalignment);

        EXPECT_EQ(reader.read(buffer.record()), 0U);

        EXPECT_EQ(buffer.contents(), counted(reader.size));
        EXPECT_THAT(buffer.leadBytes(), Each(poison));
        EXPECT_THAT(lines(), IsEmpty());
        expectDatabaseCalls({"DB_GetCurrentDb", "DB_Get"});
        expectCurrentDbHandle(buffer.record());
    }
}

TEST_P(ReaderTest, AsksTheCurrentDatabaseForKeyAndSize)
{
    const Reader &reader = GetParam();
    platform.setRecord(reader.key, counted(reader.size));
    Buffer buffer(reader.size, 0);

    reader.read(buffer.record());

    const fake::Call call = platform.callsTo("DB_Get").at(0);
    EXPECT_EQ(call.handle, platform.database());
    EXPECT_EQ(call.key, reader.key);
    EXPECT_EQ(call.size, reader.size);
}

TEST_P(ReaderTest, ReadsIntoAZeroedLocalRecordOrStraightIntoTheCallers)
{
    const Reader &reader = GetParam();
    platform.setRecord(reader.key, counted(reader.size));
    Buffer buffer(reader.size, 0);

    reader.read(buffer.record());

    const fake::Call call = platform.callsTo("DB_Get").at(0);
    if (reader.copy == Copy::straight) {
        EXPECT_EQ(call.buffer, buffer.record());
        EXPECT_THAT(call.data, Each(poison)) << "the buffer must not be cleared";
    } else {
        EXPECT_NE(call.buffer, buffer.record());
        EXPECT_THAT(call.data, Each(0)) << "the local record must be zeroed";
    }
}

TEST_P(ReaderTest, FailsWithoutAnEnvironment)
{
    const Reader &reader = GetParam();
    platform.failOpen();
    platform.setRecord(reader.key, counted(reader.size));
    Buffer buffer(reader.size, 0);

    const std::uint32_t result = reader.read(buffer.record());

    if (reader.noEnvironmentCode == 0) { /* nothing is opened, so nothing fails */
        EXPECT_EQ(result, 0U);
        EXPECT_EQ(buffer.contents(), counted(reader.size));
        EXPECT_THAT(platform.callsTo("DB_Open"), IsEmpty());
        return;
    }
    EXPECT_EQ(result, reader.noEnvironmentCode);
    expectLines(line(noEnvironmentText));
    expectDatabaseCalls({});
    EXPECT_THAT(buffer.bytes, Each(poison));
}

TEST_P(ReaderTest, FailsWithoutADatabase)
{
    const Reader &reader = GetParam();
    platform.failCurrentDb();
    Buffer buffer(reader.size, 0);

    EXPECT_EQ(reader.read(buffer.record()), reader.noDatabaseCode);

    expectLines(line(reader.noDatabaseText));
    expectDatabaseCalls({"DB_GetCurrentDb"});
    expectCurrentDbHandle(buffer.record());
    EXPECT_THAT(buffer.bytes, Each(poison));
}

TEST_P(ReaderTest, FailsWhenTheReadFails)
{
    const Reader &reader = GetParam();
    for (const int code : {-5, 1, -30798, 2147483647}) {
        platform.clearCalls();
        platform.failGet(reader.key, code);
        Buffer buffer(reader.size, 0);

        EXPECT_EQ(reader.read(buffer.record()),
                  reader.readCode == ownCode ? static_cast<std::uint32_t>(code) : reader.readCode);

        expectLines(line(reader.readText, code));
        expectDatabaseCalls({"DB_GetCurrentDb", "DB_Get"});
        EXPECT_THAT(buffer.bytes, Each(poison));
    }
}

TEST_P(ReaderTest, AFailedReadThatScribblesReachesOnlyTheUnbufferedRecords)
{
    const Reader &reader = GetParam();
    platform.failGet(reader.key, -5, Bytes(reader.size, 0x5C));
    Buffer buffer(reader.size, 0);

    reader.read(buffer.record());

    EXPECT_THAT(buffer.bytes, Each(reader.copy == Copy::straight ? 0x5C : poison));
}

TEST_P(ReaderTest, LogsBeforeItReturnsAndOpensAfreshForEachCall)
{
    const Reader &reader = GetParam();
    platform.setRecord(reader.key, counted(reader.size));
    Buffer buffer(reader.size, 0);

    reader.read(buffer.record());
    const std::size_t callsOfOne = platform.calls().size();
    reader.read(buffer.record());

    EXPECT_EQ(platform.calls().size(), 2 * callsOfOne);
}

INSTANTIATE_TEST_SUITE_P(Accessors, ReaderTest, testing::ValuesIn(readers), fake::RowName());

} // namespace

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The two writers of the store, and the status record's way there and back. */
#include <numeric>

#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using fake::Bytes;
using fake::Shape;
using testing::ElementsAre;
using testing::IsEmpty;

/* What the writers of the rows below store. */
const Bytes statusRecord{1};
const Bytes ifcRecord = [] {
    Bytes bytes(84);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{1});
    return bytes;
}();

std::uint32_t putStatus()
{
    return NW_LMDB_Put_NetStatus(1);
}

std::uint32_t putIfcState()
{
    /* At an odd address, with nothing behind it. */
    Bytes buffer(1);
    buffer.insert(buffer.end(), ifcRecord.begin(), ifcRecord.end());
    buffer.shrink_to_fit();
    return NW_LMDB_Put_IfcState(
        reinterpret_cast<const NW_IFC_STATE_DB_INFO_S *>(buffer.data() + 1));
}

struct Writer {
    std::string name;
    std::uint32_t (*write)();
    std::uint32_t key;
    Bytes record;
    Shape shape;
    std::uint32_t noDatabaseCode;
    const char *writeText;
    std::uint32_t writeCode;
};

/* clang-format off */
const Writer writers[] = {
    {"NetStatus", putStatus,   0x10610006, statusRecord, fake::error,   1,
     "Failed to put net status information to DB.", 1},
    {"IfcState",  putIfcState, 0x10610007, ifcRecord,    fake::ifcFail, 0x1E000A33,
     "Failed to put interface state to DB.",        0x1E000A34},
};
/* clang-format on */

class WriterTest : public fake::FakePlatformRows<Writer> {
protected:
    void expectLine(const char *text) const
    {
        EXPECT_THAT(lines(), ElementsAre(fake::isLine(fake::networkUnit, GetParam().shape, text)));
    }
};

TEST_P(WriterTest, StoresTheRecordInTheCurrentDatabase)
{
    const Writer &writer = GetParam();

    EXPECT_EQ(writer.write(), 0U);

    EXPECT_EQ(platform.record(writer.key), writer.record);
    EXPECT_THAT(lines(), IsEmpty());
    ASSERT_THAT(platform.callNames(), ElementsAre("DB_Open", "DB_GetCurrentDb", "DB_PutInternal"));
    EXPECT_EQ(platform.calls()[1].handle, platform.environment());
    const fake::Call &put = platform.calls()[2];
    EXPECT_EQ(put.handle, platform.database());
    EXPECT_EQ(put.size, writer.record.size());
    EXPECT_EQ(put.text, "libnetwork_mng");
    EXPECT_GT(put.line, 0U);
}

TEST_P(WriterTest, FailsWithoutAnEnvironment)
{
    platform.failOpen();

    EXPECT_EQ(GetParam().write(), 0x81000001U);

    expectLine("Failed to open lmdb database.");
    EXPECT_THAT(platform.callNames(), ElementsAre("DB_Open", "BMC_DiagLogOut"));
}

TEST_P(WriterTest, FailsWithoutADatabase)
{
    platform.failCurrentDb();

    EXPECT_EQ(GetParam().write(), GetParam().noDatabaseCode);

    expectLine("Failed to create LMDB environment.");
    EXPECT_THAT(platform.callNames(), ElementsAre("DB_Open", "DB_GetCurrentDb", "BMC_DiagLogOut"));
}

TEST_P(WriterTest, FailsWhenTheWriteFails)
{
    for (const int code : {-5, 28}) {
        platform.clearCalls();
        platform.failPut(GetParam().key, code);

        EXPECT_EQ(GetParam().write(), GetParam().writeCode);

        expectLine(GetParam().writeText);
        EXPECT_EQ(platform.record(GetParam().key), std::nullopt);
    }
}

INSTANTIATE_TEST_SUITE_P(Accessors, WriterTest, testing::ValuesIn(writers), fake::RowName());

class NetStatus : public fake::FakePlatformTest {};

TEST_F(NetStatus, ReadsBackWhatWasPut)
{
    for (const int value : {1, 0, 2, 255}) {
        std::uint8_t status = 0x77;

        EXPECT_EQ(NW_LMDB_Put_NetStatus(static_cast<std::uint8_t>(value)), 0U);
        EXPECT_EQ(NW_LMDB_Get_NetStatus(&status), 0U);

        EXPECT_EQ(status, value);
    }
}

TEST_F(NetStatus, StoresExactlyOneByte)
{
    std::uint8_t around[9];
    std::fill(std::begin(around), std::end(around), std::uint8_t{0xA5});
    platform.setRecord(0x10610006, Bytes{1});

    EXPECT_EQ(NW_LMDB_Get_NetStatus(&around[4]), 0U);

    EXPECT_THAT(around, ElementsAre(0xA5, 0xA5, 0xA5, 0xA5, 1, 0xA5, 0xA5, 0xA5, 0xA5));
}

} // namespace

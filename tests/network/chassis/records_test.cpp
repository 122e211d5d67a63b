// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The chassis records in the database: every step of each accessor, and what it leaves alone. */
#include "caller_record.hpp"
#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using chassis::CallerRecord;
using chassis::counted;
using fake::Bytes;
using fake::LineMatcher;
using fake::Shape;
using testing::ElementsAre;
using testing::IsEmpty;

/* Who gives the handle that the record is read and written with. */
enum class Handle { database, environment };

struct Accessor {
    std::string name;
    std::uint32_t (*call)(void *record);
    std::uint32_t key;
    std::uint32_t size;
    Shape openShape;
    std::uint32_t openCode;
    Handle handle;
    const char *databaseText; /* no current database */
    Shape failShape;
    const char *failText; /* failed read or write; a read prints the database's code */
};

template <auto accessor>
std::uint32_t call(void *record)
{
    return [record]<typename Record>(std::uint32_t (*function)(Record *)) {
        return function(static_cast<Record *>(record));
    }(accessor);
}

const char *const putDatabase = "Failed to create LMDB environment.";
const char *const getDatabase = "Failed to create LMDB environment!\n";

/* clang-format off */
const Accessor writers[] = {
    {"Network", call<NW_LMDB_Put_OaNetworkInfo>, 0x10610008, 12,
     fake::ifcFail, 0x81000001, Handle::database, putDatabase,
     fake::error, "Failed to put OANetwork data to DB."},
    {"Temperature", call<NW_LMDB_Put_OATemperaInfo>, 0x1061000A, 64,
     fake::error, 0x81000001, Handle::database, putDatabase,
     fake::error, "Failed to put OA Tempera Info data to DB."},
    {"Ocp", call<NW_LMDB_Put_AllOcpTemp>, 0x1061000C, 32,
     fake::error, 0x81000005, Handle::environment, nullptr,
     fake::error, "Failed to put all ocp tempera data to DB."},
    {"Fan", call<NW_LMDB_Put_AllOMFanInfo>, 0x1061000D, 220,
     fake::error, 0x81000005, Handle::environment, nullptr,
     fake::error, "Failed to put all fan data to DB."},
};

const Accessor readers[] = {
    {"Network", call<NW_LMDB_Get_OaNetworkInfo>, 0x10610008, 12,
     fake::ifcFail, 0x81000001, Handle::database, getDatabase,
     fake::error, "Failed to put OANetwork data to DB! iRet = %d.\n"},
    {"Temperature", call<NW_LMDB_Get_OATemperaInfo>, 0x1061000A, 64,
     fake::error, 0x81000001, Handle::database, getDatabase,
     fake::error, "Failed to get OA Tempera Info data to DB! iRet = %d.\n"},
    {"Ocp", call<NW_LMDB_Get_AllOcpTemp>, 0x1061000C, 32,
     fake::error, 0x81000005, Handle::environment, nullptr,
     fake::debug, "Failed to get all ocp temp data from DB! iRet = %d."},
    {"Fan", call<NW_LMDB_Get_AllOMFanInfo>, 0x1061000D, 220,
     fake::error, 0x81000005, Handle::environment, nullptr,
     fake::debug, "Failed to get all fan data from DB! iRet = %d."},
};
/* clang-format on */

class ChassisAccessor : public fake::FakePlatformRows<Accessor> {
protected:
    bool usesDatabase() const
    {
        return GetParam().handle == Handle::database;
    }

    std::vector<std::string> callsEndingIn(const std::vector<std::string> &end) const
    {
        std::vector<std::string> calls{"DB_Open"};
        if (usesDatabase()) {
            calls.push_back("DB_GetCurrentDb");
        }
        calls.insert(calls.end(), end.begin(), end.end());
        return calls;
    }

    void expectHandles(const fake::Call &access)
    {
        EXPECT_EQ(access.handle, usesDatabase() ? platform.database() : platform.environment());
        for (const fake::Call &call : platform.callsTo("DB_GetCurrentDb")) {
            EXPECT_EQ(call.handle, platform.environment());
        }
        EXPECT_EQ(access.key, GetParam().key);
        EXPECT_EQ(access.size, GetParam().size);
    }

    void expectOpenFailure(void *record)
    {
        platform.failOpen();

        EXPECT_EQ(GetParam().call(record), GetParam().openCode);

        EXPECT_THAT(lines(), ElementsAre(fake::isLine(fake::networkUnit, GetParam().openShape,
                                                      "Failed to open lmdb database.")));
        EXPECT_THAT(platform.callNames(), ElementsAre("DB_Open", "BMC_DiagLogOut"));
    }

    /* Accessors that need no current database succeed without one. */
    void expectDatabaseFailure(void *record)
    {
        platform.failCurrentDb();

        EXPECT_EQ(GetParam().call(record), usesDatabase() ? 0x81000005U : 0U);

        if (usesDatabase()) {
            EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine(GetParam().databaseText)));
            EXPECT_EQ(platform.callNames(), callsEndingIn({"BMC_DiagLogOut"}));
        } else {
            EXPECT_THAT(lines(), IsEmpty());
            EXPECT_THAT(platform.callsTo("DB_GetCurrentDb"), IsEmpty());
        }
    }

    LineMatcher isFailure(int code) const
    {
        return fake::isLine(fake::networkUnit, GetParam().failShape, GetParam().failText, code);
    }
};

class ChassisWriter : public ChassisAccessor {};

TEST_P(ChassisWriter, StoresTheRecord)
{
    const Bytes bytes = counted(GetParam().size);
    const CallerRecord record(bytes);

    EXPECT_EQ(GetParam().call(record.get()), 0U);

    EXPECT_EQ(platform.record(GetParam().key), bytes);
    EXPECT_EQ(platform.callNames(), callsEndingIn({"DB_PutInternal"}));
    const fake::Call put = platform.calls().back();
    expectHandles(put);
    EXPECT_EQ(put.text, "libnetwork_mng");
    EXPECT_GT(put.line, 0U);
    EXPECT_EQ(record.bytes(), bytes);
}

TEST_P(ChassisWriter, FailsWithoutAnEnvironment)
{
    expectOpenFailure(CallerRecord(GetParam().size).get());
}

TEST_P(ChassisWriter, FailsWithoutADatabaseWhereItNeedsOne)
{
    expectDatabaseFailure(CallerRecord(GetParam().size).get());
}

TEST_P(ChassisWriter, FailsWhenTheWriteFails)
{
    for (const int code : {-5, 28}) {
        platform.clearCalls();
        platform.failPut(GetParam().key, code);

        EXPECT_EQ(GetParam().call(CallerRecord(GetParam().size).get()), 0x81000007U);

        EXPECT_THAT(lines(), ElementsAre(isFailure(code)));
        EXPECT_EQ(platform.callNames(), callsEndingIn({"DB_PutInternal", "BMC_DiagLogOut"}));
        EXPECT_EQ(platform.record(GetParam().key), std::nullopt);
    }
}

INSTANTIATE_TEST_SUITE_P(Records, ChassisWriter, testing::ValuesIn(writers), fake::RowName());

class ChassisReader : public ChassisAccessor {};

TEST_P(ChassisReader, CopiesTheRecordThroughAZeroedOne)
{
    platform.setRecord(GetParam().key, counted(GetParam().size));
    const CallerRecord record(GetParam().size);

    EXPECT_EQ(GetParam().call(record.get()), 0U);

    EXPECT_EQ(record.bytes(), counted(GetParam().size));
    EXPECT_EQ(platform.callNames(), callsEndingIn({"DB_Get"}));
    const fake::Call get = platform.calls().back();
    expectHandles(get);
    EXPECT_NE(get.buffer, record.get());
    EXPECT_EQ(get.data, Bytes(GetParam().size));
}

TEST_P(ChassisReader, FailsWithoutAnEnvironment)
{
    platform.setRecord(GetParam().key, counted(GetParam().size));
    const CallerRecord record(GetParam().size);

    expectOpenFailure(record.get());

    EXPECT_TRUE(record.isUntouched());
}

TEST_P(ChassisReader, FailsWithoutADatabaseWhereItNeedsOne)
{
    platform.setRecord(GetParam().key, counted(GetParam().size));
    const CallerRecord record(GetParam().size);

    expectDatabaseFailure(record.get());

    EXPECT_EQ(record.isUntouched(), usesDatabase());
}

TEST_P(ChassisReader, FailsWhenTheReadFails)
{
    for (const int code : {-5, 1, -30798}) {
        platform.clearCalls();
        platform.failGet(GetParam().key, code, Bytes(GetParam().size, 0x5C));
        const CallerRecord record(GetParam().size);

        EXPECT_EQ(GetParam().call(record.get()), 0x81000006U);

        EXPECT_THAT(lines(), ElementsAre(isFailure(code)));
        EXPECT_EQ(platform.callNames(), callsEndingIn({"DB_Get", "BMC_DiagLogOut"}));
        EXPECT_TRUE(record.isUntouched());
    }
}

INSTANTIATE_TEST_SUITE_P(Records, ChassisReader, testing::ValuesIn(readers), fake::RowName());

} // namespace

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The temperature readers: refused while the chassis network is down. */
#include <optional>

#include "bmc_platform.h"
#include "caller_record.hpp"
#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

std::optional<int> openingsLeft; /* how often the database may still be opened, if limited */

} // namespace

/* The names are the linker's. */
extern "C" {
void *__real_DB_Open(void);
void *__wrap_DB_Open(void);

void *__wrap_DB_Open(void)
{
    void *environment = __real_DB_Open();
    return !openingsLeft || (*openingsLeft)-- > 0 ? environment : nullptr;
}
}

namespace {

using chassis::CallerRecord;
using chassis::counted;
using fake::Bytes;
using fake::LineMatcher;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr std::uint32_t networkKey = 0x10610008;
constexpr std::uint32_t general = 0x81000001;

struct Reader {
    std::string name;
    std::uint32_t (*read)(void *record);
    std::uint32_t key;
    std::size_t size;
    const char *failText;
    LineMatcher readLine; /* the accessor's, a failed read of code -7 */
    std::uint32_t noEnvironmentCode;
    std::vector<std::string> calls; /* behind the network record's */
};

/* clang-format off */
const Reader readers[] = {
    {"Chassis", LIB_OA_GetOATemperaInfo, 0x1061000A, 64, "LIB_OA_GetOATemperaInfo Failed !",
     fake::isErrorLine("Failed to get OA Tempera Info data to DB! iRet = %d.\n", -7),
     0x81000001, {"DB_Open", "DB_GetCurrentDb", "DB_Get"}},
    {"Ocp", LIB_OA_GetAllOcpTemp, 0x1061000C, 32, "Failed to get all ocp temp!",
     fake::isDebugLine("Failed to get all ocp temp data from DB! iRet = %d.", -7),
     0x81000005, {"DB_Open", "DB_Get"}},
};
/* clang-format on */

Bytes network(std::uint8_t connected)
{
    Bytes record(12, 1); /* only byte 0 tells */
    record[0] = connected;
    return record;
}

class Temperatures : public fake::FakePlatformRows<Reader> {
protected:
    Temperatures()
    {
        platform.setRecord(networkKey, network(1));
        platform.setRecord(GetParam().key, counted(GetParam().size));
    }
    ~Temperatures() override
    {
        openingsLeft.reset();
    }

    std::uint32_t read()
    {
        return GetParam().read(record.get());
    }

    /* Nothing but the network record was asked for. */
    void expectDisconnected(std::vector<LineMatcher> first)
    {
        first.push_back(fake::isDebugLine("OA Network disconnected!"));
        EXPECT_THAT(lines(), ElementsAreArray(first));
        for (const fake::Call &get : platform.callsTo("DB_Get")) {
            EXPECT_EQ(get.key, networkKey);
        }
        EXPECT_EQ(platform.callsTo("DB_Open").size(), 1U);
        EXPECT_TRUE(record.isUntouched());
    }

    const CallerRecord record{GetParam().size};
};

TEST_P(Temperatures, AreReadWhileTheNetworkIsConnected)
{
    EXPECT_EQ(read(), 0U);

    EXPECT_EQ(record.bytes(), counted(GetParam().size));
    EXPECT_THAT(lines(), IsEmpty());
    std::vector<std::string> calls{"DB_Open", "DB_GetCurrentDb", "DB_Get"};
    calls.insert(calls.end(), GetParam().calls.begin(), GetParam().calls.end());
    EXPECT_EQ(platform.callNames(), calls);
    EXPECT_EQ(platform.callsTo("DB_Get")[0].data, Bytes(12));
}

TEST_P(Temperatures, AreRefusedUnlessTheConnectionByteIsOne)
{
    for (const int connected : {0, 2, 0x81, 255}) {
        platform.clearCalls();
        platform.setRecord(networkKey, network(static_cast<std::uint8_t>(connected)));

        EXPECT_EQ(read(), general);

        expectDisconnected({});
    }
}

TEST_P(Temperatures, AreRefusedWithoutANetworkRecord)
{
    platform.failGet(networkKey, -404);

    EXPECT_EQ(read(), general);

    expectDisconnected(
        {fake::isErrorLine("Failed to put OANetwork data to DB! iRet = %d.\n", -404)});
}

TEST_P(Temperatures, AreRefusedWhenAFailedReadLeftAConnectedRecord)
{
    platform.failGet(networkKey, -3, network(1));

    EXPECT_EQ(read(), general);

    expectDisconnected({fake::isErrorLine("Failed to put OANetwork data to DB! iRet = %d.\n", -3)});
}

TEST_P(Temperatures, AreRefusedWithoutAnEnvironment)
{
    platform.failOpen();

    EXPECT_EQ(read(), general);

    expectDisconnected(
        {fake::isLine(fake::networkUnit, fake::ifcFail, "Failed to open lmdb database.")});
}

TEST_P(Temperatures, AreRefusedWithoutADatabase)
{
    platform.failCurrentDb();

    EXPECT_EQ(read(), general);

    expectDisconnected({fake::isErrorLine("Failed to create LMDB environment!\n")});
}

TEST_P(Temperatures, ReportAFailedReadWithTheAccessorsCode)
{
    platform.failGet(GetParam().key, -7, Bytes(GetParam().size, 0x5C));

    EXPECT_EQ(read(), 0x81000006U);

    EXPECT_THAT(lines(), ElementsAre(GetParam().readLine, fake::isDebugLine(GetParam().failText)));
    EXPECT_TRUE(record.isUntouched());
}

TEST_P(Temperatures, ReportAnEnvironmentThatIsGone)
{
    openingsLeft = 1;

    EXPECT_EQ(read(), GetParam().noEnvironmentCode);

    EXPECT_THAT(lines(), ElementsAre(fake::isErrorLine("Failed to open lmdb database."),
                                     fake::isDebugLine(GetParam().failText)));
    EXPECT_TRUE(record.isUntouched());
}

INSTANTIATE_TEST_SUITE_P(Readers, Temperatures, testing::ValuesIn(readers), fake::RowName());

} // namespace

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Success sentences: every row on its own, several fields and ports, zero bitmaps, records that
 * cannot be read back. */
#include "operate_log_fixture.hpp"

namespace operatelog {
namespace {

using testing::ElementsAre;

class SuccessSentence : public OperateLogTest {};

/* The host name rows share a bit and have tests of their own. */
TEST_F(SuccessSentence, PrintsEachFieldFromItsOwnPlace)
{
    for (std::size_t index = 0; index < successRows.size(); ++index) {
        const SuccessRow &row = successRows[index];
        const std::size_t ports = row.module == hostName ? 0 : layoutOf(row.module).ports;
        for (std::size_t port = 0; port < ports; ++port) {
            Change change(row.module);
            change.add(row, port);

            EXPECT_EQ(build(row.module, change.install()),
                      sentenceOf(row.module, port, fieldOf(row)))
                << "row " << index << " port " << port;
        }
    }
}

TEST_F(SuccessSentence, ReadsRequestsAtAnyAlignment)
{
    for (const Layout &layout : layouts()) {
        Change change(layout.module);
        change.addAll(0);
        const Bytes &request = change.install();
        const std::string aligned = build(layout.module, request);
        for (const std::size_t misalignment : {1U, 2U, 3U}) {
            Bytes shifted(misalignment, poison);
            shifted.insert(shifted.end(), request.begin(), request.end());
            shifted.shrink_to_fit();
            *log = NW_OPER_LOG_S{};

            NW_OperateLogBuild(layout.module, 0, 0, shifted.data() + misalignment, log.get());

            EXPECT_EQ(textOf(log->szOperLog), aligned);
        }
    }
}

TEST_F(SuccessSentence, FollowsRowOrderNotBitOrder)
{
    Change change(an);
    change.addAll(0);
    EXPECT_EQ(build(an, change.install()),
              "Configured auto-negotiation for the dedicated network port successfully"
              ", auto-negotiation: Disabled, duplex: half, speed: 123456.");

    Change type(lan);
    type.add(successRows[36]).add(successRows[35]).add(successRows[23]).add(successRows[24]);
    EXPECT_EQ(build(lan, type.install()), "LAN settings configured successfully for dedicated port"
                                          ", IPv4: Disabled, IPv4 type: DHCP, IPv6: Disabled"
                                          ", IPv6 type: DHCP.");
}

TEST_F(SuccessSentence, OfEveryModuleHoldsAllFields)
{
    for (const std::uint32_t module : {lldp, ncsi, netMode, an, lanReverse}) {
        Change change(module);
        change.addAll(0);
        EXPECT_EQ(build(module, change.install()),
                  sentenceOf(module, 0, fieldsOf(module, 0xFFFFFFFF)));
    }
    for (std::size_t port = 0; port < 3; ++port) {
        Change change(dns);
        change.addAll(port);
        EXPECT_EQ(build(dns, change.install()), sentenceOf(dns, port, fieldsOf(dns, 0xFFFF)));
    }
}

TEST_F(SuccessSentence, PutsIpv4RoutesBehindAllOtherLanFields)
{
    Change change(lan);
    change.addAll(1, 1).add(successRows[53], 1).add(successRows[25], 1);

    EXPECT_EQ(
        build(lan, change.install()),
        sentenceOf(lan, 1,
                   fieldOf(successRows[25]) + fieldOf(successRows[53]) + fieldsOf(lan, 0, 0x3F)));
}

TEST_F(SuccessSentence, HasSelectedAdapterInSpiteOfItsExclusionMask)
{
    Change change(ncsi);
    change.add(successRows[10]).setWord(0, 0, 0x8 | 0x1E4);

    const std::string text = build(ncsi, change.install());

    EXPECT_THAT(text, testing::HasSubstr(", selected network adapter: NIC two"));
}

TEST_F(SuccessSentence, OfSeveralPortsFollowOneAnother)
{
    for (const std::uint32_t module : {lan, dns}) {
        const SuccessRow &row = successRows[module == lan ? 52 : 12];
        Change change(module);
        change.add(row, 0).add(row, 2);

        EXPECT_EQ(build(module, change.install()),
                  sentenceOf(module, 0, fieldOf(row)) + sentenceOf(module, 2, fieldOf(row)));
    }

    Change both(an);
    both.add(successRows[2], 0).add(successRows[4], 1);
    EXPECT_EQ(build(an, both.install()),
              "Configured auto-negotiation for the dedicated network port successfully"
              ", auto-negotiation: Disabled."
              "Configured auto-negotiation for the shared network port successfully"
              ", speed: 123456.");
}

TEST_F(SuccessSentence, IgnoresTheReportedPort)
{
    Change change(lan);
    change.add(successRows[25], 1);
    for (const std::uint32_t port : {0U, 1U, 2U, 7U, 0xFFFFFFFFU}) {
        EXPECT_EQ(build(lan, change.install(), port), sentenceOf(lan, 1, fieldOf(successRows[25])));
    }
}

TEST_F(SuccessSentence, IsMissingForAZeroBitmap)
{
    for (const Layout &layout : layouts()) {
        platform.clearCalls();
        const Change change(layout.module);

        EXPECT_EQ(build(layout.module, change.install()), "") << layout.module;

        EXPECT_THAT(lines(), ElementsAre(operLogLine("")));
    }
}

TEST_F(SuccessSentence, WithBitsThatNoRowHasIsHeadingAndFullStop)
{
    const std::pair<std::uint32_t, std::uint32_t> cases[] = {
        {hostName, 0x08},   {lan, 0x80004000}, {dns, 0xE0E0},    {lldp, 0x04},
        {ncsi, 0x80000000}, {netMode, 0x02},   {an, 0xFFFFFFF8}, {lanReverse, 0x80}};
    for (const auto &[module, bits] : cases) {
        Change change(module);
        change.setWord(0, 0, bits);
        EXPECT_EQ(build(module, change.install()), sentenceOf(module, 0, ""));
    }
}

TEST_F(SuccessSentence, OfAWordWithoutItsTwinIsBuilt)
{
    Change change(lan);
    change.addAll(2, 1);
    EXPECT_EQ(build(lan, change.install()), sentenceOf(lan, 2, fieldsOf(lan, 0, 0x3F)));
}

TEST_F(SuccessSentence, OfUnsetAddressesHasEmptyValues)
{
    Change change(lan);
    change.add(successRows[27]).setValue(13, Bytes(4)).add(successRows[38]).setValue(62, Bytes(16));
    EXPECT_EQ(build(lan, change.install()),
              "LAN settings configured successfully for dedicated port"
              ", IPv4 gateway: , IPv6 gateway: .");

    Change mode(dns);
    mode.add(successRows[12]).setValue(4, {3});
    EXPECT_EQ(build(dns, mode.install()),
              "DNS settings configured successfully for dedicated port, IPv4 DNS mode: .");
}

TEST_F(SuccessSentence, FollowTheSubModuleOrder)
{
    const std::uint32_t modules = lanReverse | netMode | lldp | hostName;
    Change record(hostName);
    record.add(successRows[56]).setWord(0, 0, 0x4).setValue(132, {'n', 0});
    Bytes request = record.install();
    request[4] = 0x1; /* the bitmap byte of all four */
    request[5] = 0;
    platform.setRecord(0x10610000, Bytes(260));

    EXPECT_EQ(build(modules, request),
              "Host name set successfully, host name mode: Manual, host name BMC: ."
              "Configured LLDP settings successfully, LLDP state: Disabled."
              "Configured network port mode successfully, network port mode: Normal."
              "Configured port number switchover successfully, port number switchover: Disabled.");
}

TEST_F(SuccessSentence, OfNoModuleIsEmpty)
{
    const Bytes request(8, 0xFF);
    for (const std::uint32_t module : {0U, 0x100U, 0xFFFFFF00U}) {
        platform.clearCalls();
        EXPECT_EQ(build(module, request), "");
        EXPECT_THAT(lines(), ElementsAre(operLogLine("")));
    }
}

struct ReadBackRow {
    std::string name;
    std::uint32_t module;
    std::uint32_t key;
    std::vector<fake::LineMatcher> lines; /* of the accessors */
};

class ReadBack : public OperateLogTest, public testing::WithParamInterface<ReadBackRow> {};

const ReadBackRow readBackRows[] = {
    {"HostName",
     hostName,
     0x10610000,
     {fake::isErrorLine("Get hostname info failed, Ret:%d", -5),
      fake::isErrorLine("Failed to get hostname info!"),
      fake::isLine(fake::operateLogUnit, fake::error, "[%d]Get BMCHostName Info from DB Failed.",
                   static_cast<int>(0x81000006))}},
    {"Dns",
     dns,
     0x10610001,
     {fake::isErrorLine("Get dns info failed, Ret:%d", -5),
      fake::isLine(fake::operateLogUnit, fake::error, "Get dns info from lmdb failed.")}},
    /* The words of the DNS module. */
    {"Ncsi",
     ncsi,
     0x10610005,
     {fake::isErrorLine("Get ncsi info failed!\n"), fake::isErrorLine("Get ncsi info failed!\n"),
      fake::isLine(fake::operateLogUnit, fake::error, "Get dns info from lmdb failed.")}},
};

TEST_P(ReadBack, FailureIsLoggedAndLeavesTheSentenceOut)
{
    const ReadBackRow &row = GetParam();
    Change change(row.module);
    change.addAll(0);
    change.install();
    platform.failGet(row.key, -5, Bytes(64, 0x55));

    EXPECT_EQ(build(row.module, change.request()), "");

    std::vector<fake::LineMatcher> expected = row.lines;
    expected.push_back(operLogLine(""));
    EXPECT_THAT(lines(), testing::ElementsAreArray(expected));
}

/* LLDP's sentence comes from the same bitmap byte. */
TEST_P(ReadBack, FailureLeavesOtherModulesTheirSentences)
{
    Bytes request(1788);
    request[4] = 0x1;
    platform.failGet(GetParam().key, -5);

    EXPECT_EQ(build(GetParam().module | lldp, request),
              "Configured LLDP settings successfully, LLDP state: Disabled.");
}

TEST_P(ReadBack, ReadsTheRecordOnce)
{
    Change change(GetParam().module);
    change.addAll(0);

    build(GetParam().module, change.install());

    const std::vector<fake::Call> reads = platform.callsTo("DB_Get");
    ASSERT_EQ(reads.size(), 1U);
    EXPECT_EQ(reads.front().key, GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(Records, ReadBack, testing::ValuesIn(readBackRows), fake::RowName());

} // namespace
} // namespace operatelog

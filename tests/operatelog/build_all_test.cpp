// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The combined set: one slot for each text, each built on a private context. */
#include "operate_log_fixture.hpp"

namespace operatelog {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t ipv6RouteBits = 0x00FC0000;
constexpr std::uint32_t ipv4RouteBits = 0x0000003F;

class BuildAll : public OperateLogTest {
protected:
    BuildAll()
    {
        place(lanPart.request(), 16);
        place(dnsPart.request(), 522);
        place(modePart.request(), 2446);
        std::memset(log.get(), 'o', sizeof(*log)); /* old texts, unterminated */
    }

    void success(std::uint32_t mask)
    {
        place(lanPart.install(), 16);
        place(dnsPart.install(), 522);
        place(modePart.install(), 2446);
        const Bytes before = request;
        NW_OperateLogBuildAll(mask, 0, 0, 1, request.data(), log.get());
        EXPECT_EQ(request, before) << "the caller's request was changed";
        EXPECT_THAT(log->szOperLog, Each('o'));
    }

    void place(const Bytes &part, std::size_t at)
    {
        std::copy(part.begin(), part.end(), request.begin() + static_cast<long>(at));
    }

    Bytes request = Bytes(2482, poison);
    Change lanPart{lan};
    Change dnsPart{dns};
    Change modePart{netMode};
};

TEST_F(BuildAll, SplitsTheLanTextOverItsThreeSlots)
{
    lanPart.addAll(1, 1).add(successRows[25], 1).add(successRows[42], 1).add(successRows[47], 2);

    success(lan);

    const std::string ipv6 =
        sentenceOf(lan, 1, fieldOf(successRows[42])) + sentenceOf(lan, 2, fieldOf(successRows[47]));
    const std::string ipv4 = sentenceOf(lan, 1, fieldsOf(lan, 0, ipv4RouteBits));
    const std::string other = sentenceOf(lan, 1, fieldOf(successRows[25]));
    EXPECT_EQ(textOf(log->szLanIpv6RouteLog), ipv6);
    EXPECT_EQ(textOf(log->szLanIpv4RouteLog), ipv4);
    EXPECT_EQ(textOf(log->szLanOtherLog), other);
    EXPECT_THAT(log->szDnsLog, Each('o'));
    EXPECT_THAT(log->szNetModeLog, Each('o'));
    EXPECT_EQ(log->ucLogLevel, 6);
    EXPECT_THAT(lines(), ElementsAre(operLogLine(ipv6), operLogLine(ipv4), operLogLine(other)));
}

TEST_F(BuildAll, OfIpv4RoutesAloneLeavesTheOtherLanSlotsEmpty)
{
    lanPart.addAll(0, 1);

    success(lan);

    EXPECT_EQ(textOf(log->szLanIpv4RouteLog), sentenceOf(lan, 0, fieldsOf(lan, 0, ipv4RouteBits)));
    EXPECT_EQ(textOf(log->szLanIpv6RouteLog), "");
    EXPECT_EQ(textOf(log->szLanOtherLog), "");
}

TEST_F(BuildAll, OfIpv6RoutesAloneLeavesTheOtherLanSlotsEmpty)
{
    lanPart.setWord(2, 0, ipv6RouteBits).add(successRows[43], 2).setWord(2, 0, 0x80000);

    success(lan);

    EXPECT_EQ(textOf(log->szLanIpv6RouteLog), sentenceOf(lan, 2, fieldOf(successRows[43])));
    EXPECT_EQ(textOf(log->szLanIpv4RouteLog), "");
    EXPECT_EQ(textOf(log->szLanOtherLog), "");
}

TEST_F(BuildAll, PutsEachLanBitInExactlyOneSlot)
{
    for (std::uint32_t word = 0; word < 2; ++word) {
        for (std::uint32_t bit = 0; bit < 32; ++bit) {
            const std::uint32_t mask = 1U << bit;
            lanPart = Change{lan};
            lanPart.addAll(0, 0).addAll(0, 1).setWord(0, 0, 0).setWord(0, 1, 0).setWord(0, word,
                                                                                        mask);
            std::memset(log.get(), 'o', sizeof(*log));

            success(lan);

            const std::string text =
                sentenceOf(lan, 0, fieldsOf(lan, word == 0 ? mask : 0, word == 1 ? mask : 0));
            const bool ipv6 = word == 0 && (mask & ipv6RouteBits) != 0;
            const bool ipv4 = word == 1 && (mask & ipv4RouteBits) != 0;
            EXPECT_EQ(textOf(log->szLanIpv6RouteLog), ipv6 ? text : "") << word << ":" << bit;
            EXPECT_EQ(textOf(log->szLanIpv4RouteLog), ipv4 ? text : "") << word << ":" << bit;
            EXPECT_EQ(textOf(log->szLanOtherLog), ipv6 || ipv4 ? "" : text) << word << ":" << bit;
        }
    }
}

/* Whoever looks while a text is built: its own thread from the log, or another one. */
TEST_F(BuildAll, NeverTouchesTheMainSlotAndTheLevelOnlyBehindAText)
{
    lanPart.addAll(1);
    dnsPart.addAll(0);
    modePart.addAll(0);
    std::string levels;
    platform.onLine([&] {
        EXPECT_THAT(log->szOperLog, Each('o'));
        levels += log->ucLogLevel == 6 ? '6' : static_cast<char>(log->ucLogLevel);
    });

    success(0xFFFFFFFF);

    EXPECT_EQ(levels, "o6666") << "at the lines of the five texts";
}

TEST_F(BuildAll, BuildsDnsFromItsPart)
{
    dnsPart.add(successRows[13], 0).add(successRows[19], 2);

    success(dns);

    const std::string text =
        sentenceOf(dns, 0, fieldOf(successRows[13])) + sentenceOf(dns, 2, fieldOf(successRows[19]));
    EXPECT_EQ(textOf(log->szDnsLog), text);
    EXPECT_EQ(log->ucLogLevel, 6);
    EXPECT_THAT(lines(), ElementsAre(operLogLine(text)));
    EXPECT_THAT(log->szLanOtherLog, Each('o'));
    EXPECT_THAT(log->szLanIpv4RouteLog, Each('o'));
    EXPECT_THAT(log->szLanIpv6RouteLog, Each('o'));
    EXPECT_THAT(log->szNetModeLog, Each('o'));
}

TEST_F(BuildAll, BuildsTheNetworkPortModeFromItsPart)
{
    modePart.addAll(0);

    success(netMode);

    const std::string text = "Configured network port mode successfully"
                             ", network port mode: Normal.";
    EXPECT_EQ(textOf(log->szNetModeLog), text);
    EXPECT_THAT(lines(), ElementsAre(operLogLine(text)));
    EXPECT_THAT(log->szDnsLog, Each('o'));
}

TEST_F(BuildAll, RunsLanDnsAndNetworkPortModeInThatOrder)
{
    lanPart.add(successRows[52], 0);
    dnsPart.add(successRows[12], 1);
    modePart.addAll(0);

    success(0xFFFFFFFF);

    EXPECT_THAT(lines(),
                ElementsAre(operLogLine(""), operLogLine(""),
                            operLogLine(sentenceOf(lan, 0, fieldOf(successRows[52]))),
                            operLogLine(sentenceOf(dns, 1, fieldOf(successRows[12]))),
                            operLogLine(sentenceOf(netMode, 0, fieldOf(successRows[57])))));
}

TEST_F(BuildAll, IgnoresOtherModules)
{
    lanPart.addAll(0);
    modePart.addAll(0);

    success(~(lan | dns | netMode));

    EXPECT_THAT(fake::bytesOf(*log), Each('o'));
    EXPECT_THAT(lines(), IsEmpty());
}

TEST_F(BuildAll, EmptiesTheSlotWhoseSentenceIsMissing)
{
    dnsPart.add(successRows[12], 0);
    dnsPart.install();
    place(dnsPart.request(), 522);
    platform.failGet(0x10610001, -5);

    NW_OperateLogBuildAll(dns | netMode, 0, 0, 0, request.data(), log.get());

    EXPECT_EQ(textOf(log->szDnsLog), "");
    EXPECT_EQ(textOf(log->szNetModeLog), "");
    EXPECT_EQ(log->ucLogLevel, 6);
}

TEST_F(BuildAll, CutsEachTextAtItsSlotsEnd)
{
    for (std::size_t port = 0; port < 3; ++port) {
        lanPart.addAll(port, 0).addAll(port, 1);
    }
    const auto whole = [](std::uint32_t word0, std::uint32_t word1) {
        std::string text;
        for (std::size_t port = 0; port < 3; ++port) {
            text += sentenceOf(lan, port, fieldsOf(lan, word0, word1));
        }
        return text.substr(0, 511);
    };

    success(lan);

    EXPECT_EQ(textOf(log->szLanIpv6RouteLog), whole(ipv6RouteBits, 0));
    EXPECT_EQ(textOf(log->szLanIpv4RouteLog), whole(0, ipv4RouteBits));
    EXPECT_EQ(textOf(log->szLanOtherLog), whole(~ipv6RouteBits, ~ipv4RouteBits));
}

TEST_F(BuildAll, ReadsARequestAtAnyAddress)
{
    lanPart.addAll(1, 1);
    place(lanPart.install(), 16);
    Bytes shifted(1);
    shifted.insert(shifted.end(), request.begin(), request.end());
    shifted.shrink_to_fit();

    NW_OperateLogBuildAll(lan, 0, 0, 0, shifted.data() + 1, log.get());

    EXPECT_EQ(textOf(log->szLanIpv4RouteLog), sentenceOf(lan, 1, fieldsOf(lan, 0, ipv4RouteBits)));
}

struct FailureCase {
    std::string name;
    std::uint32_t failModule;
    std::uint32_t result;
    std::uint32_t port;
    std::string text;
};

/* clang-format off */
const FailureCase failures[] = {
    {"Lan",         0x02, 0x1E000A27, 1, "Failed to configure LAN settings for shared port."},
    {"LanLocal",    0x02, 0x9E0000FF, 1, "Failed to configure LAN settings."},
    {"LanPortMax",  0x02, 1, 0xFFFFFFFF, "Failed to configure LAN settings for ."},
    {"Dns",         0x04, 0x81000013, 2, "Failed to configure DNS settings for active/standby port."},
    {"NetMode",     0x20, 0x81000013, 0, "Failed to configure the network port mode."},
};
/* clang-format on */

class BuildAllFailure : public BuildAll, public testing::WithParamInterface<FailureCase> {
protected:
    void fail(std::uint32_t mask)
    {
        NW_OperateLogBuildAll(mask, GetParam().failModule, GetParam().result, GetParam().port,
                              request.data(), log.get());
    }
};

TEST_P(BuildAllFailure, LandsInTheMainSlotAlone)
{
    for (const std::uint32_t mask : {0U, 0x26U}) {
        platform.clearCalls();
        std::memset(log.get(), 'o', sizeof(*log));

        fail(mask);

        EXPECT_EQ(textOf(log->szOperLog), GetParam().text);
        const Bytes bytes = fake::bytesOf(*log);
        EXPECT_THAT(Bytes(bytes.begin() + 512, bytes.end() - 1), Each('o'));
        EXPECT_EQ(log->ucLogLevel, 6);
        EXPECT_THAT(lines(), ElementsAre(operLogLine(GetParam().text)));
    }
}

INSTANTIATE_TEST_SUITE_P(Modules, BuildAllFailure, testing::ValuesIn(failures), fake::RowName());

class BuildAllOtherFailure : public BuildAllFailure {};

TEST_P(BuildAllOtherFailure, WritesNothing)
{
    fail(0x26);

    EXPECT_THAT(fake::bytesOf(*log), Each('o'));
    EXPECT_THAT(platform.calls(), IsEmpty());
}

const FailureCase otherFailures[] = {
    {"None", 0, 1, 0, ""},         {"HostName", 0x01, 1, 0, ""}, {"Lldp", 0x08, 1, 0, ""},
    {"Ncsi", 0x10, 1, 0, ""},      {"An", 0x40, 1, 0, ""},       {"LanReverse", 0x80, 1, 0, ""},
    {"LanAndDns", 0x06, 1, 0, ""}, {"All", 0x26, 1, 0, ""},
};

INSTANTIATE_TEST_SUITE_P(Modules, BuildAllOtherFailure, testing::ValuesIn(otherFailures),
                         fake::RowName());

} // namespace
} // namespace operatelog

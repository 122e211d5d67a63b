// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The live address states, from scripted datagrams.
#include <map>

#include "kernel_answers.hpp"

namespace {

using namespace kernel_answers;
using ::testing::Values;

struct Walk {
    std::string name;
    Bytes datagram;
    std::map<std::size_t, std::uint8_t> states; // slots that the kernel refines
    Lines lines;
};
using LanQueryKernel = fake::FakePlatformRows<Walk>;

TEST_P(LanQueryKernel, RefinesTheStatesItNames)
{
    const Board board = plainBoard();
    query::prepare(board);
    kernel::script().datagram = GetParam().datagram;

    const query::Answer answer = query::getLanConfig("eth1", before());
    query::View expected = query::expectedView(board, 1, before());
    for (const auto &[slot, state] : GetParam().states) {
        expected.state(slot, state);
    }
    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(query::difference(answer.view, expected.bytes()), "");
    EXPECT_EQ(support::loggedLines(),
              query::exchangeLines(GetParam().lines) + query::expectedEndLines(board));
    EXPECT_EQ(kernel::script().calls, query::oneExchange);
    EXPECT_TRUE(kernel::script().receivedIntoZeros);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Flags, LanQueryKernel, Values(
    Walk{"Valid",     build({reported(staticAddress, 0x80)}), {{1, 3}},
         ownMessage(both, 0x80, staticAddress, fullSize)},
    Walk{"NoFlagSet", build({reported(staticAddress, 0)}), {{1, 3}},
         ownMessage(both, 0, staticAddress, fullSize)},
    Walk{"Tentative", build({reported(staticAddress, 0xC0)}), {{1, 1}},
         ownMessage(both, 0xC0, staticAddress, fullSize)},
    Walk{"Failed",    build({reported(staticAddress, 0x88)}), {{1, 2}},
         ownMessage(both, 0x88, staticAddress, fullSize)},
    Walk{"FailedBeatsTentative", build({reported(staticAddress, 0xC8)}), {{1, 2}},
         ownMessage(both, 0xC8, staticAddress, fullSize)},
    Walk{"HighBits",  build({reported(staticAddress, 0x80000280)}), {{1, 3}},
         ownMessage(both, 0x80000280, staticAddress, fullSize)},
    Walk{"HeaderFlagsDoNotCount",
         build({Message{.index = ownIndex, .attributes = {address(staticAddress)}, .flags = 0xC8}}), {{1, 3}},
         {headLine(ownIndex, 0xC8), infoLine, addressLine, flagLine(0, staticAddress), leftLine(44)}},
    Walk{"InheritedWithoutAttribute",
         build({reported(staticAddress, 0x88), own({address(linkLocal)}), reported(further0, 0x40),
                own({address(further1)})}),
         {{1, 2}, {0, 2}, {2, 1}, {3, 1}},
         ownMessage(both, 0x88, staticAddress, 192) + ownMessage({addressLine}, 0x88, linkLocal, 140) +
         ownMessage(both, 0x40, further0, 96) + ownMessage({addressLine}, 0x40, further1, 44)},
    Walk{"NotInheritedFromForeign",
         build({Message{.index = foreignIndex, .attributes = {address(linkLocal), flags(0x88)}}, own({address(linkLocal)})}),
         {{0, 3}},
         Lines{headLine(foreignIndex)} + ownMessage({addressLine}, 0, linkLocal, 44)}),
    fake::RowName{});

INSTANTIATE_TEST_SUITE_P(Matches, LanQueryKernel, Values(
    Walk{"LinkLocal", build({reported(linkLocal, 0x80)}), {{0, 3}}, ownMessage(both, 0x80, linkLocal, fullSize)},
    Walk{"Further0",  build({reported(further0, 0x08)}), {{2, 2}}, ownMessage(both, 0x08, further0, fullSize)},
    Walk{"Further2",  build({reported(further2, 0x80)}), {{4, 3}}, ownMessage(both, 0x80, further2, fullSize)},
    Walk{"Nothing",   build({reported("2001:db8::2", 0x80)}), {}, ownMessage(both, 0x80, "2001:db8::2", fullSize)},
    Walk{"Several",   build({reported(further1, 0x40), reported(linkLocal, 0x88), reported(staticAddress, 0)}),
         {{3, 1}, {0, 2}, {1, 3}},
         ownMessage(both, 0x40, further1, 3 * fullSize) + ownMessage(both, 0x88, linkLocal, 2 * fullSize) +
         ownMessage(both, 0, staticAddress, fullSize)},
    Walk{"LastReportWins", build({reported(further1, 0x40), reported(further1, 0)}), {{3, 3}},
         ownMessage(both, 0x40, further1, 2 * fullSize) + ownMessage(both, 0, further1, fullSize)},
    Walk{"Foreign",   build({Message{.index = foreignIndex, .attributes = {address(staticAddress), flags(0x88)}}}),
         {}, {headLine(foreignIndex)}},
    Walk{"ForeignHighIndex", build({Message{.index = 0x1000C, .attributes = {address(staticAddress)}}}), {},
         {headLine(0x1000C)}},
    Walk{"NoAddress", build({own({flags(0x08)})}), {}, ownMessage({flagsLine}, 0x08, "", 32)},
    Walk{"LastAddressCounts", build({own({address(staticAddress), flags(0x08), address(further0)})}), {{2, 2}},
         ownMessage({addressLine, flagsLine, addressLine}, 0x08, further0, 72)},
    Walk{"Ipv4Family", build({Message{.index = ownIndex, .attributes = {Attribute{1, {10, 0, 0, 1}}, flags(0x80)},
                                      .family = 2, .prefix = 24}}), {},
         {headLine(ownIndex, 0x80, 24), infoLine, addressLine, flagsLine, flagLine(0x80, "10.0.0.1"), leftLine(40)}},
    Walk{"OtherMessageType", build({Message{.index = ownIndex, .attributes = {address(staticAddress), flags(0x08)},
                                            .type = 21}}), {{1, 2}},
         ownMessage(both, 0x08, staticAddress, fullSize)}),
    fake::RowName{});

const Attribute label = {3, {'e', 't', 'h', '1', 0}};
const Attribute cacheInfo = {6, Bytes(16, 0xFF)};

INSTANTIATE_TEST_SUITE_P(Attributes, LanQueryKernel, Values(
    Walk{"FlagsFirst", build({own({flags(0x40), address(further0)})}), {{2, 1}},
         ownMessage({flagsLine, addressLine}, 0x40, further0, fullSize)},
    Walk{"OthersBetween", build({own({cacheInfo, label, flags(0x08), Attribute{0x8002}, address(staticAddress)})}),
         {{1, 2}},
         ownMessage({typeLine(6), typeLine(3), flagsLine, typeLine(0x8002), addressLine}, 0x08, staticAddress, 88)},
    Walk{"None", build({own({})}), {}, ownMessage({}, 0, "", 24)},
    Walk{"LengthBelow4Ends", build({own({flags(0x08), Attribute{1, Bytes(16), 3}, address(staticAddress)})}), {},
         ownMessage({flagsLine}, 0x08, "", 72)},
    Walk{"LengthZeroEnds", build({own({flags(0x08), Attribute{1, Bytes(16), 0}})}), {},
         ownMessage({flagsLine}, 0x08, "", 52)},
    Walk{"LengthAboveRestEnds", build({own({flags(0x08), Attribute{1, Bytes(16), 21}})}), {},
         ownMessage({flagsLine}, 0x08, "", 52)},
    Walk{"LengthFarAboveRestEnds", build({own({address(staticAddress), Attribute{8, {8, 0, 0, 0}, 0xFFFF}})}), {{1, 3}},
         ownMessage({addressLine}, 0, staticAddress, 52)},
    Walk{"AddressTooShort", build({own({Attribute{1, Bytes(15, 1)}, flags(0x08)})}), {},
         ownMessage(both, 0x08, "", 52)},
    Walk{"FlagsTooShort", build({own({address(staticAddress), Attribute{8, {8, 0}}})}), {{1, 3}},
         ownMessage(both, 0, staticAddress, 50)},
    Walk{"UnroundedLastLength", build({own({address(staticAddress), Attribute{3, {'x'}}})}), {{1, 3}},
         ownMessage({addressLine, typeLine(3)}, 0, staticAddress, 49)},
    Walk{"UnroundedMessage", build({own({address(staticAddress), Attribute{3, {'x'}}}), reported(linkLocal, 0x40)}),
         {{1, 3}, {0, 1}},
         ownMessage({addressLine, typeLine(3)}, 0, staticAddress, 104) + ownMessage(both, 0x40, linkLocal, fullSize)}),
    fake::RowName{});

const Message doneMessage = {.type = datagram::done, .length = 20};
Bytes cut(Bytes bytes, std::size_t count)
{
    bytes.resize(bytes.size() - count);
    return bytes;
}
const Lines firstOfTwo = ownMessage(both, 0x08, staticAddress, 2 * fullSize);
Message second(std::optional<std::uint32_t> length)
{
    Message message = reported(linkLocal, 0x08);
    message.length = length;
    return message;
}

INSTANTIATE_TEST_SUITE_P(Ends, LanQueryKernel, Values(
    Walk{"EmptyDatagram", {}, {}, {}},
    Walk{"Done",          build({doneMessage}), {}, {endOfDump}},
    Walk{"Error",         build({Message{.attributes = {Attribute{0, Bytes(12)}}, .type = datagram::error}}), {}, {errorInDump}},
    Walk{"DoneEndsWalk",  build({reported(staticAddress, 0x08), Message{.type = datagram::done}, reported(linkLocal, 0x08)}),
         {{1, 2}}, ownMessage(both, 0x08, staticAddress, 2 * fullSize + 24) + Lines{endOfDump}},
    Walk{"ErrorEndsWalk", build({reported(staticAddress, 0x08), Message{.type = datagram::error}, reported(linkLocal, 0x08)}),
         {{1, 2}}, ownMessage(both, 0x08, staticAddress, 2 * fullSize + 24) + Lines{errorInDump}},
    Walk{"HeaderAlone",   build({Message{.type = datagram::done, .length = 16}}), {}, {endOfDump}},
    Walk{"FifteenBytes",  Bytes(15, 3), {}, {}},
    Walk{"LengthBelow16", build({reported(staticAddress, 0x08), second(15)}), {{1, 2}}, firstOfTwo},
    Walk{"LengthZero",    build({reported(staticAddress, 0x08), second(0)}), {{1, 2}}, firstOfTwo},
    Walk{"LengthAboveRest", build({reported(staticAddress, 0x08), second(fullSize + 1)}), {{1, 2}}, firstOfTwo},
    Walk{"LengthHuge",    build({reported(staticAddress, 0x08), second(0xFFFFFFFF)}), {{1, 2}}, firstOfTwo},
    Walk{"LengthRoundsToZero", build({reported(staticAddress, 0x08), second(0xFFFFFFFD)}), {{1, 2}}, firstOfTwo},
    Walk{"CutInSecond",   cut(build({reported(staticAddress, 0x08), second({})}), 1), {{1, 2}},
         ownMessage(both, 0x08, staticAddress, 2 * fullSize - 1)},
    Walk{"CutInSecondHeader", cut(build({reported(staticAddress, 0x08), second({})}), fullSize - 15), {{1, 2}},
         ownMessage(both, 0x08, staticAddress, fullSize + 15)},
    Walk{"CutInFirst",    cut(build({reported(staticAddress, 0x08)}), 1), {}, {}}),
    fake::RowName{});
/* clang-format on */

// Twins among the stored addresses, and texts that are not there.
struct Twin {
    std::string name;
    std::function<void(support::PortEntry &)> script;
    Message message;
    std::map<std::size_t, std::uint8_t> states;
};
using LanQueryTwins = fake::FakePlatformRows<Twin>;

TEST_P(LanQueryTwins, TheOrderOfTheComparisonsDecides)
{
    Board board = plainBoard();
    support::PortEntry entry = board.lan.port(1);
    GetParam().script(entry);
    query::prepare(board);
    kernel::script().datagram = build({GetParam().message});

    query::View expected = query::expectedView(board, 1, before());
    for (const auto &[slot, state] : GetParam().states) {
        expected.state(slot, state);
    }
    EXPECT_EQ(query::difference(query::getLanConfig("eth1", before()).view, expected.bytes()), "");
}

void clear(support::PortEntry &entry, std::size_t offset)
{
    std::fill_n(&entry[offset], 16, std::uint8_t{0});
}
void nothing(support::PortEntry &) {}
const Message empty = {.index = ownIndex, .attributes = {flags(0x08)}};

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, LanQueryTwins, Values(
    Twin{"LinkLocalBeforeStatic", [](auto &entry) { entry.ipv6Address(linkLocal, 64); },
         reported(linkLocal, 0x08), {{0, 2}}},
    Twin{"LinkLocalBeforeFurther", [](auto &entry) { entry.ipv6Further(0, linkLocal, 64); },
         reported(linkLocal, 0x08), {{0, 2}}},
    Twin{"StaticBeforeFurther", [](auto &entry) { entry.ipv6Further(0, staticAddress, 64); },
         reported(staticAddress, 0x08), {{1, 2}}},
    Twin{"FirstFurther", [](auto &entry) { entry.ipv6Further(2, further1, 64); },
         reported(further1, 0x08), {{3, 2}}},
    Twin{"BehindTheCount", [](auto &entry) { entry.set(at::ipv6Count, 2); }, reported(further2, 0x08), {}},
    Twin{"EmptyTextIsTheMissingLinkLocal", [](auto &entry) { clear(entry, at::ipv6LinkLocal); }, empty, {{0, 2}}},
    Twin{"EmptyTextIsTheMissingStatic", [](auto &entry) { clear(entry, at::ipv6Addr); }, empty, {{1, 2}}},
    Twin{"EmptyTextIsTheMissingFurther", [](auto &entry) { clear(entry, at::ipv6Further + 16); }, empty, {{3, 2}}},
    Twin{"EmptyTextIsNothing", nothing, empty, {}},
    Twin{"EmptyFurtherBehindTheCount", [](auto &entry) { clear(entry, at::ipv6Further + 32); entry.set(at::ipv6Count, 2); },
         empty, {}},
    Twin{"LastFurther", [](auto &entry) { entry.set(at::ipv6Count, 15).ipv6Further(14, "2001:db8:f::99", 64); },
         reported("2001:db8:f::99", 0x08), {{16, 2}}},
    Twin{"SixteenthIsTheLinkLocal", [](auto &entry) { entry.set(at::ipv6Count, 16); }, reported(linkLocal, 0x08), {{0, 2}}},
    Twin{"CountAboveSixteen", [](auto &entry) { entry.set(at::ipv6Count, 255).ipv6Further(13, "2001:db8:f::99", 64); },
         reported("2001:db8:f::99", 0x08), {{15, 2}}},
    Twin{"CountAboveSixteenNoMatch", [](auto &entry) { entry.set(at::ipv6Count, 255);
             for (std::size_t i = 3; i < 15; ++i) { entry.ipv6Further(i, "2001:db8:e::1", 64); } },
         reported("2001:db8::77", 0x08), {}}),
    fake::RowName{});
/* clang-format on */

} // namespace

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The live address states, from scripted datagrams.
#include <map>

#include "captured_dump.hpp"
#include "query_fixture.hpp"

namespace {

using datagram::address;
using datagram::Attribute;
using datagram::build;
using datagram::flags;
using datagram::Message;
using query::Board;
using query::Bytes;
using support::Lines;
using support::operator+;
using ::testing::Values;
namespace at = support::at;

constexpr std::uint32_t ownIndex = 12; // eth1
constexpr std::uint32_t foreignIndex = 11;

const char *const linkLocal = "fe80::aa";
const char *const staticAddress = "2001:db8::1";
const char *const further0 = "2001:db8:f::10";
const char *const further1 = "2001:db8:f::11";
const char *const further2 = "2001:db8:f::12";

Board plainBoard()
{
    Board board{support::ifcRecord(0), {}, true, {}};
    support::PortEntry entry = board.lan.port(1);
    entry.set(at::lanEnable, 1).ipv6Address(staticAddress, 64).set(at::ipv6Count, 3);
    support::put(board.lan.bytes(), 4 + 791 + at::ipv6LinkLocal, support::ipv6(linkLocal));
    entry.ipv6Further(0, further0, 64).ipv6Further(1, further1, 64).ipv6Further(2, further2, 64);
    return board;
}

// The caller's zeroed record, but for the bytes behind the states.
Bytes before()
{
    query::View view{Bytes(query::viewSize)};
    for (std::size_t slot = 0; slot < 18; ++slot) {
        const std::uint8_t marks[] = {0, 0xA5, 0xA5, 0xA5};
        view.raw("astIpv6AddrState", 4 * slot, marks, sizeof(marks));
    }
    return view.bytes();
}

const std::string infoLine = "addr info*************************************.";
const std::string addressLine = "addr ADDRESS info.";
const std::string flagsLine = "addr MULTICAST info.";
const std::string endOfDump = "Receive data is done.";
const std::string errorInDump = "Receive data is unright.";

std::string headLine(std::uint32_t index = ownIndex, int flagsByte = 0x80, int prefix = 64)
{
    return fake::formatted("addr flag is %x, index %x, len %x.", flagsByte, index, prefix);
}
std::string typeLine(int type)
{
    return fake::formatted("Received attr type is %d.", type);
}
std::string flagLine(unsigned word, const std::string &text)
{
    return fake::formatted("FLAG %x, addr %s.", word, text.c_str());
}
std::string leftLine(int left)
{
    return fake::formatted("left length is %d.", left);
}
// Lines of one message of the port; own: the lines of its attributes.
Lines ownMessage(const Lines &own, unsigned word, const std::string &text, int left)
{
    return Lines{headLine(), infoLine} + own + Lines{flagLine(word, text), leftLine(left)};
}
const Lines both = {addressLine, flagsLine};

Message own(std::vector<Attribute> attributes)
{
    return {.index = ownIndex, .attributes = std::move(attributes)};
}
Message reported(const std::string &text, std::uint32_t word)
{
    return own({address(text), flags(word)});
}
// Size of a message with an address and a flags attribute.
constexpr int fullSize = 24 + 20 + 8;

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

class LanQuerySocket : public fake::FakePlatformTest {
protected:
    void expectGoesOn(const Lines &kernelLines, const std::vector<std::string> &calls)
    {
        const query::Answer answer = query::getLanConfig("eth1", before());
        EXPECT_EQ(answer.result, 0U);
        EXPECT_EQ(query::difference(answer.view, query::expectedView(board_, 1, before()).bytes()),
                  "");
        EXPECT_EQ(support::loggedLines(), kernelLines + query::expectedEndLines(board_));
        EXPECT_EQ(kernel::script().calls, calls);
    }

    LanQuerySocket()
    {
        board_.lan.port(1)
            .ipv6Route(0, "fd00:1::", 48, "fd00:1::fe")
            .ipv6Route(1, "fd00:2::", 56, "fd00:2::fe");
        query::prepare(board_);
    }
    Board board_ = plainBoard();
};

TEST_F(LanQuerySocket, MissingLeavesStatesAndFillsRoutes)
{
    kernel::script().socketResult = -1;
    expectGoesOn({support::criticalLine("Ceate netlink route socket failed.")}, {"socket 16 2 0"});
}

TEST_F(LanQuerySocket, NumberZeroIsASocket)
{
    kernel::script().socketResult = 0;
    expectGoesOn(query::exchangeLines({endOfDump}),
                 {"socket 16 2 0", "send 0 24 0", "recv 0 8192 0", "close 0"});
}

TEST_F(LanQuerySocket, FailingToReceiveIsClosed)
{
    kernel::script().datagram.clear();
    kernel::script().receiveResult = -1;
    expectGoesOn({support::debugLine(" network send get addr return is 24,need ."),
                  support::criticalLine("Recv netlink route message failed.")},
                 query::oneExchange);
}

// Without waiting: nobody was asked.
const std::vector<std::string> exchangeWithoutWaiting = {"socket 16 2 0", "send 7777 24 0",
                                                         "recv 7777 8192 64", "close 7777"};

TEST_F(LanQuerySocket, FailingToSendReceivesAllTheSame)
{
    kernel::script().sendResult = -1;
    expectGoesOn(query::exchangeLines({endOfDump}), exchangeWithoutWaiting);
}

TEST_F(LanQuerySocket, FailingToSendWithNothingToReceiveIsAFailureToReceive)
{
    kernel::script().sendResult = -1;
    kernel::script().receiveResult = -1;
    expectGoesOn({support::debugLine(" network send get addr return is -1,need ."),
                  support::criticalLine("Recv netlink route message failed.")},
                 exchangeWithoutWaiting);
}

TEST_F(LanQuerySocket, CarriesOneRequestOf24Bytes)
{
    query::getLanConfig("eth1", before());
    EXPECT_EQ(kernel::script().request, (Bytes{24, 0, 0, 0, 22, 0, 0x01, 0x03, 0, 0, 0, 0,
                                               0,  0, 0, 0, 10, 0, 0,    0,    0, 0, 0, 0}));
    EXPECT_TRUE(kernel::script().receivedIntoZeros);
}

TEST_F(LanQuerySocket, ServesTheInterfaceIndexOfItsPort)
{
    for (const std::uint32_t index : {0U, 0x12345678U, 0xFFFFFFFFU}) {
        support::putU32(board_.ifc, 12, index);
        query::prepare(board_);
        kernel::script().datagram =
            build({Message{.index = index, .attributes = {address(staticAddress), flags(0x08)}}});
        query::View expected = query::expectedView(board_, 1, before());
        expected.state(1, 2);
        EXPECT_EQ(query::difference(query::getLanConfig("eth1", before()).view, expected.bytes()),
                  "");
    }
}

TEST_F(LanQuerySocket, UnderstandsWhatAKernelSent)
{
    support::putU32(board_.ifc, 12, 5);
    support::put(board_.lan.bytes(), 4 + 791 + at::ipv6LinkLocal, support::ipv6("fe80::ff:fe00:1"));
    board_.lan.port(1)
        .ipv6Address("2001:db8:2::1", 64)
        .ipv6Further(0, "2001:db8:2::f", 64)
        .ipv6Further(1, "2001:db8:2::2", 64);
    query::prepare(board_);
    kernel::script().datagram.assign(std::begin(capturedDump), std::end(capturedDump));

    query::View expected = query::expectedView(board_, 1, before());
    const std::pair<std::size_t, std::uint8_t> states[] = {{0, 3}, {1, 3}, {2, 2}, {3, 1}};
    for (const auto &[slot, state] : states) {
        expected.state(slot, state);
    }
    EXPECT_EQ(query::difference(query::getLanConfig("eth1", before()).view, expected.bytes()), "");

    const Lines attributes = {addressLine, typeLine(6), flagsLine};
    const auto message = [&](int flagsByte, unsigned word, const std::string &text, int left,
                             const Lines &more = {}) {
        return Lines{headLine(5, flagsByte), infoLine} + attributes + more +
               Lines{flagLine(word, text), leftLine(left)};
    };
    EXPECT_EQ(support::loggedLines(),
              query::exchangeLines(Lines{headLine(1, 0x80, 128), headLine(4, 0x82), headLine(4)} +
                                   message(0xC0, 0xC0, "2001:db8:2::2", 316) +
                                   message(0xC8, 0xC8, "2001:db8:2::f", 244) +
                                   message(0x82, 0x82, "2001:db8:2::1", 172) +
                                   message(0x80, 0x80, "fe80::ff:fe00:1", 100, {typeLine(11)}) +
                                   Lines{endOfDump}) +
                  query::expectedEndLines(board_));
}

} // namespace

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The exchange with the kernel: its calls, what goes on without it, and one that really happened.
#include "captured_dump.hpp"
#include "kernel_answers.hpp"

namespace {

using namespace kernel_answers;

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

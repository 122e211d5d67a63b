// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Rubbish from the kernel: whatever a datagram holds, the query succeeds, closes its socket once
// and changes nothing but address states.
#include <random>

#include "query_fixture.hpp"

namespace {

using datagram::Attribute;
using datagram::Message;
using query::Bytes;

constexpr std::uint32_t ownIndex = 11; // eth0

class Rubbish {
public:
    explicit Rubbish(std::uint32_t seed) : random_(seed) {}

    Bytes datagram()
    {
        Bytes bytes;
        const std::size_t wanted = below(4) == 0 ? 8192 : below(600);
        while (bytes.size() < wanted) {
            datagram::align(bytes);
            const Bytes next = datagram::build(message());
            bytes.insert(bytes.end(), next.begin(), next.end());
        }
        if (below(2) == 0 && !bytes.empty()) {
            bytes.resize(below(static_cast<std::uint32_t>(bytes.size() + 1)));
        }
        bytes.resize(std::min<std::size_t>(bytes.size(), 8192));
        for (std::uint32_t changes = below(4); changes > 0 && !bytes.empty(); --changes) {
            bytes[below(static_cast<std::uint32_t>(bytes.size()))] = byte();
        }
        return bytes;
    }

private:
    std::uint32_t below(std::uint32_t end)
    {
        return static_cast<std::uint32_t>(random_() % end);
    }
    std::uint8_t byte()
    {
        return static_cast<std::uint8_t>(random_());
    }

    Message message()
    {
        Message message;
        message.index = below(4) == 0 ? below(20) : ownIndex;
        message.family = below(4) == 0 ? byte() : (below(2) == 0 ? 10 : 2);
        message.type = below(16) == 0 ? static_cast<std::uint16_t>(below(5)) : 20;
        for (std::uint32_t count = below(5); count > 0; --count) {
            message.attributes.push_back(attribute());
        }
        if (below(6) == 0) {
            message.length = below(80);
        }
        return message;
    }
    Attribute attribute()
    {
        Attribute attribute;
        attribute.type = static_cast<std::uint16_t>(below(2) == 0 ? 1 : below(10));
        attribute.data.resize(below(2) == 0 ? 16 : below(24));
        std::ranges::generate(attribute.data, [this] { return byte(); });
        if (below(6) == 0) {
            attribute.length = static_cast<std::uint16_t>(below(50));
        }
        return attribute;
    }

    std::mt19937 random_;
};

class LanQueryFuzz : public ::testing::TestWithParam<std::uint32_t> {};

TEST_P(LanQueryFuzz, ChangesNothingButStates)
{
    query::Board board = query::distinctBoard(0, 0);
    board.lan.port(0).set(support::at::ipv6Count, 255);
    const Bytes before(query::viewSize);
    query::prepare(board);
    const query::View quiet = query::expectedView(board, 0, before);
    const std::size_t states = query::offsetOf("astIpv6AddrState");
    Rubbish rubbish(GetParam());

    for (int round = 0; round < 500; ++round) {
        query::prepare(board);
        kernel::script().datagram = rubbish.datagram();
        const query::Answer answer = query::getLanConfig("eth0", before);

        ASSERT_EQ(answer.result, 0U) << round;
        ASSERT_EQ(kernel::script().calls, query::oneExchange) << round;
        query::View expected = quiet;
        for (std::size_t slot = 0; slot < 18; ++slot) {
            const std::uint8_t state = answer.view[states + 4 * slot];
            ASSERT_TRUE(state >= 1 && state <= 3) << "round " << round << " slot " << slot;
            expected.state(slot, state);
        }
        ASSERT_EQ(query::difference(answer.view, expected.bytes()), "") << round;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, LanQueryFuzz, ::testing::Range(11U, 27U));

} // namespace

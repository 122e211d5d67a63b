// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* OCP temperatures of every length: what is sent, what the line shows, and that not a byte behind
 * the caller's is read. */
#include "caller_record.hpp"
#include "fake_matchers.hpp"
#include "network_mng.h"

namespace {

using fake::Bytes;
using testing::ElementsAre;

constexpr std::uint32_t payloadSize = 3072;

struct Length {
    std::string name;
    std::uint32_t length;
    unsigned first;
    unsigned second;
};

/* The bytes count up from 1, so that the temperatures are 0x0201, 0x0403, ... The line shows 0 for
 * one that is not there as a whole. */
/* clang-format off */
const Length lengths[] = {
    {"None",        0,          0,      0},
    {"HalfOfOne",   1,          0,      0},
    {"One",         2,          0x0201, 0},
    {"OneAndAHalf", 3,          0x0201, 0},
    {"Two",         4,          0x0201, 0x0403},
    {"Odd",         5,          0x0201, 0x0403},
    {"AlmostFull",  3071,       0x0201, 0x0403},
    {"Full",        3072,       0x0201, 0x0403},
    {"OneTooMany",  3073,       0x0201, 0x0403},
    {"Request",     3074,       0x0201, 0x0403},
    {"Signed",      0x80000000, 0x0201, 0x0403},
    {"All",         0xFFFFFFFF, 0x0201, 0x0403},
};
/* clang-format on */

class OcpLength : public fake::FakePlatformRows<Length> {};

TEST_P(OcpLength, SendsWhatHasAPlace)
{
    const Length &row = GetParam();
    const std::uint32_t sent = std::min(row.length, payloadSize);
    const Bytes bytes = chassis::counted(sent);
    const auto memory = std::make_unique<std::uint8_t[]>(sent);
    std::copy(bytes.begin(), bytes.end(), memory.get());
    Bytes expected{0, 2};
    expected.insert(expected.end(), bytes.begin(), bytes.end());
    expected.resize(3074);

    const auto *temperatures = reinterpret_cast<const std::uint16_t *>(memory.get());
    EXPECT_EQ(LIB_OA_SendOcpTemp(temperatures, row.length), 0U);

    EXPECT_THAT(lines(), ElementsAre(fake::isDebugLine("Send ocp1temp:%u, ocp2temp:%u", row.first,
                                                       row.second)));
    EXPECT_THAT(platform.callNames(), ElementsAre("BMC_DiagLogOut", "MRPC_Call", "MRPC_MsgFree"));
    EXPECT_EQ(platform.calls()[1].data, expected);
}

INSTANTIATE_TEST_SUITE_P(Lengths, OcpLength, testing::ValuesIn(lengths), fake::RowName());

} // namespace

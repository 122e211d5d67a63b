// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Records of a value area: bytes, limits, and what a refused record leaves alone. */
#include "fake_matchers.hpp"
#include "network_mng.h"
#include "package.hpp"

namespace {

using fake::Bytes;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint8_t poison = 0xA5;

/* The running length, at an address as odd as callers may have. */
class Total {
public:
    explicit Total(std::uint32_t value)
    {
        std::memcpy(bytes_ + 1, &value, sizeof(value));
    }

    std::uint32_t *get()
    {
        return reinterpret_cast<std::uint32_t *>(bytes_ + 1);
    }
    std::uint32_t value() const
    {
        std::uint32_t value = 0;
        std::memcpy(&value, bytes_ + 1, sizeof(value));
        return value;
    }

private:
    std::uint8_t bytes_[8]{};
};

void append(Bytes &bytes, const Bytes &more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

class Tlv : public fake::FakePlatformTest {};

TEST_F(Tlv, RecordsStandOneBehindTheOther)
{
    struct Record {
        std::uint32_t type;
        Bytes value;
        Bytes written;
    };
    const Record records[] = {
        {1, {0x11, 0x22, 0x33}, {1, 3, 0x11, 0x22, 0x33}},
        {255, {}, {255, 0}},
        {0, {0x44}, {0, 1, 0x44}},
        {0x1FE, {0, 0}, {0xFE, 2, 0, 0}},
        {0xFFFFFF07, {9}, {7, 1, 9}},
    };
    Bytes area(246, poison);
    Total total(0);

    Bytes expected;
    for (const Record &record : records) {
        Bytes value = record.value;
        value.push_back(poison); /* an empty value has an address too */

        NW_FillTlv(static_cast<std::uint8_t>(record.value.size()), record.type, value.data(),
                   total.get(), area.data());

        append(expected, record.written);
        EXPECT_EQ(total.value(), expected.size());
    }

    append(expected, Bytes(area.size() - expected.size(), poison));
    EXPECT_EQ(area, expected);
    EXPECT_THAT(lines(), IsEmpty());
}

/* Every value length at every running length around the limit: written when it ends within 246
 * bytes, otherwise one line and nothing changed. */
class TlvLength : public fake::FakePlatformTest {
protected:
    void expectAccepted(std::uint8_t length, std::uint32_t start)
    {
        const std::uint32_t end = start + 2U + length;
        Bytes expected(start, poison);
        append(expected, {0x5C, length});
        append(expected, package::counted(length));
        Bytes area(end, poison);
        area.shrink_to_fit();

        fill(length, start, area.data());

        ASSERT_EQ(area, expected);
        ASSERT_EQ(total.value(), end);
        ASSERT_THAT(lines(), IsEmpty());
    }

    void expectRefused(std::uint8_t length, std::uint32_t start)
    {
        Bytes area(246, poison);

        fill(length, start, area.data());

        ASSERT_EQ(area, Bytes(246, poison));
        ASSERT_EQ(total.value(), start);
        ASSERT_THAT(lines(),
                    ElementsAre(fake::isErrorLine(
                        "Invalid Parameter: ucValueLen=%u, enNetworkTlvType=%u, puiTotalLen=%u.",
                        static_cast<unsigned>(length), 0x5CU, start)));
    }

    Total total{0};

private:
    void fill(std::uint8_t length, std::uint32_t start, std::uint8_t *area)
    {
        platform.clearCalls();
        total = Total(start);
        const Bytes value = package::counted(std::max<std::size_t>(length, 1));
        NW_FillTlv(length, 0x5C, value.data(), total.get(), area);
    }
};

TEST_F(TlvLength, DecidesWithTheRunningLength)
{
    for (std::uint32_t length = 0; length <= 255; ++length) {
        for (std::uint32_t start = 0; start <= 250; ++start) {
            const auto valueLength = static_cast<std::uint8_t>(length);
            if (start + 2 + length <= 246) {
                expectAccepted(valueLength, start);
            } else {
                expectRefused(valueLength, start);
            }
            ASSERT_FALSE(HasFatalFailure()) << length << " at " << start;
        }
    }
}

class TlvFarTotal : public TlvLength, public testing::WithParamInterface<std::uint32_t> {};

TEST_P(TlvFarTotal, IsRefusedWithoutWrapping)
{
    for (const int length : {0, 1, 2, 244, 253, 254, 255}) {
        expectRefused(static_cast<std::uint8_t>(length), GetParam());
        ASSERT_FALSE(HasFatalFailure()) << length;
    }
}

INSTANTIATE_TEST_SUITE_P(Totals, TlvFarTotal,
                         testing::Values(256U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFEFFU, 0xFFFFFF00U,
                                         0xFFFFFFF0U, 0xFFFFFFFCU, 0xFFFFFFFDU, 0xFFFFFFFEU,
                                         0xFFFFFFFFU));

TEST_F(Tlv, RefusalPrintsTheWholeType)
{
    std::uint8_t area = poison;
    Total total(246);

    NW_FillTlv(0, 0x80000001, &area, total.get(), &area);

    EXPECT_EQ(area, poison);
    EXPECT_THAT(lines(),
                ElementsAre(fake::isErrorLine(
                    "Invalid Parameter: ucValueLen=%u, enNetworkTlvType=%u, puiTotalLen=%u.", 0U,
                    2147483649U, 246U)));
}

TEST_F(Tlv, AnEmptyRecordFillsTheAreaAndNothingFollows)
{
    Bytes area(246, poison);
    Total total(244);
    const std::uint8_t value = 0x77;

    NW_FillTlv(1, 9, &value, total.get(), area.data());
    EXPECT_EQ(total.value(), 244U);
    EXPECT_EQ(area, Bytes(246, poison));

    NW_FillTlv(0, 9, &value, total.get(), area.data());
    EXPECT_EQ(total.value(), 246U);
    EXPECT_EQ(area[244], 9);
    EXPECT_EQ(area[245], 0);

    NW_FillTlv(0, 9, &value, total.get(), area.data());
    EXPECT_EQ(total.value(), 246U);
    EXPECT_EQ(lines().size(), 2U);
}

} // namespace

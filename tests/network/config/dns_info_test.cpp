// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The DNS settings shown to callers: which ports, which fields, and what stays as it was.
#include "lan_record.hpp"
#include "setter_fixture.hpp"

namespace {

using setters::Bytes;
using testing::ElementsAre;

constexpr std::size_t entrySize = 592;
constexpr std::size_t viewEntrySize = 968;
constexpr std::size_t viewSize = 3 * viewEntrySize;
constexpr std::size_t textSize = 64;

/* One family's part of a stored entry and of the view. */
struct Family {
    int family;
    std::size_t mode, server, domain, width; /* stored */
    std::size_t viewMode, viewServer, viewText, viewDomain;
};
/* clang-format off */
const Family families[] = {
    {AF_INET,    4,   5,   20,  4, 2,  4,  64, 448},
    {AF_INET6, 280, 281,  332, 16, 3, 16, 256, 708},
};
/* clang-format on */

bool isZero(std::span<const std::uint8_t> bytes)
{
    return std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; });
}

/* What the view of a port must hold, over what it held before. */
void show(std::span<const std::uint8_t> entry, std::span<std::uint8_t> view)
{
    view[0] = entry[0];
    for (const Family &family : families) {
        view[family.viewMode] = entry[family.mode];
        if (entry[family.mode] == 0) {
            continue;
        }
        support::put(view, family.viewDomain, entry.subspan(family.domain, 260));
        for (std::size_t i = 0; i < 3; ++i) {
            const auto server = entry.subspan(family.server + family.width * i, family.width);
            if (!isZero(server)) {
                support::put(view, family.viewServer + family.width * i, server);
                support::putText(view, family.viewText + textSize * i,
                                 support::addressText(family.family, server.data()) + '\0');
            }
        }
    }
}

/* What stands behind a text's terminator is nobody's promise. */
Bytes withoutTails(Bytes view)
{
    for (std::size_t port = 0; port < 3; ++port) {
        for (const Family &family : families) {
            for (std::size_t i = 0; i < 3; ++i) {
                const auto text = std::span(view).subspan(
                    viewEntrySize * port + family.viewText + textSize * i, textSize);
                const auto end = std::ranges::find(text, 0);
                std::fill(end, text.end(), std::uint8_t{0});
            }
        }
    }
    return view;
}

struct Row {
    std::string name;
    std::uint8_t mode;                                   /* of the network */
    std::function<void(std::span<std::uint8_t>)> script; /* applied to every stored entry */
};

class DnsInfo : public fake::FakePlatformRows<Row> {};

TEST_P(DnsInfo, ShowsThePortsServedAndKeepsTheRest)
{
    const Row &row = GetParam();
    platform.setRecord(NW_KEY_IFC_STATE, support::ifcRecord(row.mode));
    Bytes record = setters::pattern(3 * entrySize);
    Bytes expected(viewSize, setters::poison);
    for (std::size_t port = 0; port < 3; ++port) {
        const auto entry = std::span(record).subspan(entrySize * port, entrySize);
        row.script(entry);
        if ((port == 2) == (row.mode == 1)) {
            show(entry, std::span(expected).subspan(viewEntrySize * port, viewEntrySize));
        }
    }
    platform.setRecord(NW_KEY_DNS, record);

    const setters::Answer answer = setters::get(LIB_NW_GetAllDnsInfo);

    EXPECT_EQ(answer.result, 0U);
    EXPECT_EQ(withoutTails(answer.record), withoutTails(expected));
    EXPECT_TRUE(lines().empty());
}

void zero(std::span<std::uint8_t> entry, std::size_t offset, std::size_t count)
{
    std::ranges::fill(entry.subspan(offset, count), std::uint8_t{0});
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Settings, DnsInfo, testing::Values(
    Row{"Separate",     0, [](auto) {}},
    Row{"Bonded",       1, [](auto) {}},
    Row{"NoIpv4",       0, [](auto entry) { entry[4] = 0; }},
    Row{"NoIpv6",       0, [](auto entry) { entry[280] = 0; }},
    Row{"Neither",      1, [](auto entry) { entry[4] = entry[280] = 0; }},
    Row{"AnyModeCounts", 1, [](auto entry) { entry[4] = 0x80; entry[280] = 0xFF; }},
    Row{"HeadOfZero",   0, [](auto entry) { entry[0] = 0; }},
    Row{"FirstUnset",   0, [](auto entry) { zero(entry, 5, 4); zero(entry, 281, 16); }},
    Row{"SecondUnset",  1, [](auto entry) { zero(entry, 9, 4); zero(entry, 297, 16); }},
    Row{"ThirdUnset",   0, [](auto entry) { zero(entry, 13, 4); zero(entry, 313, 16); }},
    Row{"AllUnset",     0, [](auto entry) { zero(entry, 5, 12); zero(entry, 281, 48); }},
    // One byte that is not zero is enough for an address.
    Row{"LastByteSet",  0, [](auto entry) { zero(entry, 5, 12); entry[8] = 1; zero(entry, 281, 48); entry[328] = 1; }},
    Row{"FirstByteSet", 1, [](auto entry) { zero(entry, 5, 12); entry[13] = 1; zero(entry, 281, 48); entry[281] = 0xFD; }},
    Row{"LongestTexts", 0, [](auto entry) { std::ranges::fill(entry.subspan(5, 12), 0xFF); std::ranges::fill(entry.subspan(281, 48), 0xFF); }},
    // Domains are copied whole, whatever they hold.
    Row{"EmptyDomain",  0, [](auto entry) { entry[20] = 0; entry[332] = 0; }},
    Row{"ShortDomain",  1, [](auto entry) { entry[27] = 0; entry[340] = 0; }}),
    fake::RowName());
/* clang-format on */

/* ---- Failures ---- */

struct Failure {
    std::string name;
    std::function<void(fake::Platform &)> script;
    std::uint32_t result;
    std::vector<fake::LineMatcher> lines;
};

class DnsInfoFailure : public fake::FakePlatformRows<Failure> {};

TEST_P(DnsInfoFailure, LeavesTheRecordUntouched)
{
    platform.setRecord(NW_KEY_IFC_STATE, support::ifcRecord(0));
    platform.setRecord(NW_KEY_DNS, setters::pattern(1776));
    GetParam().script(platform);

    const setters::Answer answer = setters::get(LIB_NW_GetAllDnsInfo);

    EXPECT_EQ(answer.result, GetParam().result);
    EXPECT_EQ(answer.record, Bytes(viewSize, setters::poison));
    EXPECT_THAT(lines(), testing::ElementsAreArray(GetParam().lines));
}

fake::LineMatcher stateLine(const char *format)
{
    return fake::isLine(fake::networkUnit, fake::ifcFail, format);
}

void mode(fake::Platform &platform, std::uint8_t mode)
{
    platform.setRecord(NW_KEY_IFC_STATE, support::ifcRecord(mode));
}

/* clang-format off */
const auto noMode = fake::isErrorLine("failed to get netmode.");
INSTANTIATE_TEST_SUITE_P(Failures, DnsInfoFailure, testing::Values(
    Failure{"NoEnvironment", [](auto &platform) { platform.failOpen(); }, 0x81000001,
            {stateLine("Failed to open lmdb database."), noMode}},
    Failure{"NoDatabase", [](auto &platform) { platform.failCurrentDb(); }, 0x81000001,
            {stateLine("Failed to get interface state lmdb information!\n"), noMode}},
    Failure{"NoState", [](auto &platform) { platform.failGet(NW_KEY_IFC_STATE, 5, Bytes(84, 0)); }, 0x81000001,
            {stateLine("Get interface state info failed!\n"), noMode}},
    Failure{"Mode2", [](auto &platform) { mode(platform, 2); }, 0x81000003,
            {fake::isErrorLine("Invalid netmode info.")}},
    Failure{"Mode255", [](auto &platform) { mode(platform, 255); }, 0x81000003,
            {fake::isErrorLine("Invalid netmode info.")}},
    // The mode is judged before the settings are read.
    Failure{"ModeBeforeSettings", [](auto &platform) { mode(platform, 2); platform.failGet(NW_KEY_DNS, 5); }, 0x81000003,
            {fake::isErrorLine("Invalid netmode info.")}},
    Failure{"NoSettings", [](auto &platform) { platform.failGet(NW_KEY_DNS, -9, Bytes(1776, 1)); }, 0x81000006,
            {fake::isErrorLine("Get dns info failed, Ret:%d", -9), fake::isErrorLine("Failed to get dns info!")}},
    Failure{"NoSettingsBonded", [](auto &platform) { mode(platform, 1); platform.failGet(NW_KEY_DNS, 3); }, 0x81000006,
            {fake::isErrorLine("Get dns info failed, Ret:%d", 3), fake::isErrorLine("Failed to get dns info!")}}),
    fake::RowName());
/* clang-format on */

} // namespace

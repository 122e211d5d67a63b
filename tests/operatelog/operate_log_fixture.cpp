// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "operate_log_fixture.hpp"

#include <algorithm>
#include <stdexcept>

namespace operatelog {

namespace {

const std::vector<std::string> portNames{"dedicated port", "shared port", "active/standby port"};

std::vector<std::string> perPort(const std::string &text)
{
    std::vector<std::string> headings;
    for (const std::string &name : portNames) {
        headings.push_back(text + name);
    }
    return headings;
}

Bytes textBytes(const std::string &text)
{
    Bytes bytes(text.begin(), text.end());
    bytes.push_back(0);
    return bytes;
}

struct FormatterSample {
    NW_OPERATE_LOG_FORMAT_FN formatter;
    Sample sample;
};

/* clang-format off */
const FormatterSample formatterSamples[] = {
    {nullptr,                    {{200}, "200"}},
    {NW_OperateLogParEnable,     {{0}, "Disabled"}},
    {NW_OperateLogParManualAuto, {{0}, "Manual"}},
    {NW_OperateLogParDnsMode,    {{2}, "Auto"}},
    {NW_OperateLogParLanSrc,     {{2}, "DHCP"}},
    {NW_OperateLogParDuplex,     {{0}, "half"}},
    {NW_OperateLogParNetMode,    {{0}, "Normal"}},
    {NW_OperateLogLLDPMode,      {{3}, "TXRX"}},
    {NW_OperateLogParARPCtl,     {{2}, "disable BMC-generated Gratuitous ARPs, enable BMC-generated ARP responses"}},
    {NW_OperateLogParARPSuspend, {{1}, "suspend BMC-generated Gratuitous ARPs while the Watchdog Timer is running, "
                                       "do not suspend BMC-generated ARP responses while the Watchdog Timer is running"}},
    {NW_OperateLogParStr,        {textBytes("bmc-7"), "bmc-7"}},
    {NW_OperateLogParDNSDomain,  {textBytes("example.org"), "example.org"}},
    {NW_OperateLogParUshort,     {{0xE7, 0x0F}, "4071"}},
    {NW_OperateLogParInt,        {{0x40, 0xE2, 0x01, 0x00}, "123456"}},
    {NW_OperateLogParIpv4,       {{192, 168, 10, 2}, "192.168.10.2"}},
    {NW_OperateLogParIpv6,       {{0x20, 0x01, 0x0D, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 5}, "2001:db8::5"}},
    {NW_OperateLogParIpv4Header, {{64, 0x02, 0xFF}, "TTL: 0x40, Header Flags: 0x02, Precedence: 0xe0, Type Of Service: 0x1e"}},
    {NW_OperateLogParChannel,    {{4}, "7"}},
    {NW_OperateLogParNicPri,     {{1}, "NIC two"}},
    {NW_OperateLogParCardPri,    {{2, 0}, ", first priority network adapter: NIC three, second priority network adapter: NIC one"}},
};
/* clang-format on */

} // namespace

const std::vector<Layout> &layouts()
{
    /* clang-format off */
    static const std::vector<Layout> all{
        {hostName,   136,  1, 0, 1, 1, 0x10610000, 260,  0,  0,   {"Host name set successfully"}},
        {lan,        506,  4, 8, 3, 2, 0,          0,    32, 158, perPort("LAN settings configured successfully for ")},
        {dns,        1788, 2, 2, 3, 1, 0x10610001, 1776, 0,  592, perPort("DNS settings configured successfully for ")},
        {lldp,       8,    1, 0, 1, 1, 0,          0,    0,  0,   {"Configured LLDP settings successfully"}},
        {ncsi,       8,    4, 0, 1, 1, 0x10610005, 192,  0,  0,   {"Configured NCSI settings successfully"}},
        {netMode,    8,    1, 0, 1, 1, 0,          0,    0,  0,   {"Configured network port mode successfully"}},
        {an,         28,   4, 4, 2, 1, 0,          0,    16, 6,
         {"Configured auto-negotiation for the dedicated network port successfully",
          "Configured auto-negotiation for the shared network port successfully"}},
        {lanReverse, 8,    1, 0, 1, 1, 0,          0,    0,  0,   {"Configured port number switchover successfully"}},
    };
    /* clang-format on */
    return all;
}

const Layout &layoutOf(std::uint32_t module)
{
    for (const Layout &layout : layouts()) {
        if (layout.module == module) {
            return layout;
        }
    }
    throw std::logic_error("no such module");
}

Sample sampleOf(const SuccessRow &row)
{
    for (const FormatterSample &candidate : formatterSamples) {
        if (candidate.formatter == row.formatter) {
            return candidate.sample;
        }
    }
    throw std::logic_error("no sample for the formatter");
}

std::string fieldOf(const SuccessRow &row)
{
    std::string text = row.text;
    return text.replace(text.find('%'), 2, sampleOf(row).words);
}

Change::Change(std::uint32_t module)
    : layout_(&layoutOf(module)), request_(layout_->requestSize, poison),
      record_(layout_->recordSize, poison)
{
    for (std::size_t port = 0; port < layout_->ports; ++port) {
        for (std::size_t word = 0; word < layout_->words; ++word) {
            setWord(port, word, 0);
        }
    }
}

std::size_t Change::wordAt(std::size_t port, std::size_t word) const
{
    return 4 + port * layout_->bitmapStride + word * layout_->bitmapWidth;
}

Change &Change::setWord(std::size_t port, std::size_t word, std::uint32_t bits)
{
    for (std::size_t byte = 0; byte < layout_->bitmapWidth; ++byte) {
        request_.at(wordAt(port, word) + byte) = static_cast<std::uint8_t>(bits >> (8 * byte));
    }
    return *this;
}

Change &Change::add(const SuccessRow &row, std::size_t port)
{
    for (std::size_t byte = 0; byte < layout_->bitmapWidth; ++byte) {
        request_.at(wordAt(port, row.word) + byte) |=
            static_cast<std::uint8_t>(row.mask >> (8 * byte));
    }
    return setValue(row.offset, sampleOf(row).value, port);
}

Change &Change::addAll(std::size_t port, std::size_t word)
{
    for (const SuccessRow &row : successRows) {
        if (row.module == layout_->module && row.word == word) {
            add(row, port);
        }
    }
    return *this;
}

Change &Change::setValue(std::size_t offset, const Bytes &value, std::size_t port)
{
    Bytes &target = layout_->recordKey == 0 ? request_ : record_;
    const std::size_t at = layout_->valueBase + port * layout_->valueStride + offset;
    for (std::size_t byte = 0; byte < value.size(); ++byte) {
        target.at(at + byte) = value[byte];
    }
    return *this;
}

const Bytes &Change::install() const
{
    if (layout_->recordKey != 0) {
        fake::platform().setRecord(layout_->recordKey, record_);
    }
    return request_;
}

std::string fieldsOf(std::uint32_t module, std::uint32_t word0, std::uint32_t word1)
{
    std::string text;
    for (const std::uint32_t word : {0U, 1U}) {
        for (const SuccessRow &row : successRows) {
            if (row.module == module && row.word == word &&
                (row.mask & (word == 0 ? word0 : word1)) != 0) {
                text += fieldOf(row);
            }
        }
    }
    return text;
}

std::string sentenceOf(std::uint32_t module, std::size_t port, const std::string &fields)
{
    return layoutOf(module).headings.at(port) + fields + ".";
}

OperateLogTest::OperateLogTest()
{
    platform.setCapability("SharePort", "CardSupportNumber", std::uint16_t{2});
    platform.setCapability("SharePort", "ChannelIdOffset", std::uint16_t{3});
    platform.setCapability("SharePort", "NIC1Name", std::string("NIC one"));
    platform.setCapability("SharePort", "NIC2Name", std::string("NIC two"));
    platform.setCapability("SharePort", "NIC3Name", std::string("NIC three"));
}

std::string OperateLogTest::build(std::uint32_t module, const Bytes &request, std::uint32_t port)
{
    *log = NW_OPER_LOG_S{};
    poisonOtherSlots();
    NW_OperateLogBuild(module, 0, port, request.data(), log.get());
    expectOtherSlotsUntouched();
    EXPECT_EQ(log->ucLogLevel, 6);
    return textOf(log->szOperLog);
}

fake::LineMatcher OperateLogTest::operLogLine(const std::string &text)
{
    return fake::isLine(fake::operateLogUnit, fake::debug, "OperLog %s.", text.c_str());
}

fake::LineMatcher OperateLogTest::errorLine(const char *format)
{
    return fake::isLine(fake::operateLogUnit, fake::error, format);
}

fake::LineMatcher OperateLogTest::errorLine(const char *format, int value)
{
    return fake::isLine(fake::operateLogUnit, fake::error, format, value);
}

void OperateLogTest::poisonOtherSlots()
{
    std::memset(log->szLanOtherLog, poison, sizeof(*log) - sizeof(log->szOperLog));
}

void OperateLogTest::expectOtherSlotsUntouched() const
{
    const Bytes bytes = fake::bytesOf(*log);
    EXPECT_TRUE(std::all_of(bytes.begin() + 512, bytes.end() - 1, [](std::uint8_t byte) {
        return byte == poison;
    })) << "a slot other than the main one was written";
}

} // namespace operatelog

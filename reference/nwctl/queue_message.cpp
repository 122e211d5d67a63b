// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/queue_message.hpp"

#include "common/hex.hpp"
#include "nwctl/command.hpp"

namespace nwctl {

namespace {

constexpr std::size_t headSize = 2;
constexpr unsigned byteMax = 0xFF;

TlvRecord parseTlv(const std::string &option, const std::string &text)
{
    const auto colon = text.find(':');
    if (colon == text.npos) {
        throw Failure(Exit::usage, option, text, "expected TYPE:HEX");
    }
    const auto type = numberIn(option, text.substr(0, colon), 0, byteMax);
    return {static_cast<std::uint8_t>(type), bytesIn(option, text.substr(colon + 1))};
}

} // namespace

int queueId(const std::string &text)
{
    return static_cast<int>(numberIn("ID", text, 1, 255));
}

MessageBytes packTlv(const std::string &option, std::span<const std::string> texts)
{
    MessageBytes area(NW_TLV_AREA_SIZE);
    std::uint32_t total = 0;

    for (const std::string &text : texts) {
        TlvRecord record = parseTlv(option, text);
        const std::uint32_t before = total;
        const auto size = static_cast<std::uint8_t>(record.value.size());
        record.value.push_back(0); /* an empty value has an address, too */
        if (size + 1U == record.value.size()) {
            NW_FillTlv(size, record.type, record.value.data(), &total, area.data());
        }
        if (total == before) {
            throw Failure(Exit::usage, option, text,
                          "the records pass " + std::to_string(NW_TLV_AREA_SIZE) + " bytes");
        }
    }
    area.resize(total);
    return area;
}

std::optional<std::vector<TlvRecord>> unpackTlv(std::span<const std::uint8_t> text)
{
    std::vector<TlvRecord> records;
    while (!bmc::withoutZeroTail(text).empty()) {
        if (text.size() < headSize || text.size() - headSize < text[1]) {
            return std::nullopt;
        }
        const auto value = text.subspan(headSize, text[1]);
        records.push_back({text[0], MessageBytes(value.begin(), value.end())});
        text = text.subspan(headSize + value.size());
    }
    return records;
}

} // namespace nwctl

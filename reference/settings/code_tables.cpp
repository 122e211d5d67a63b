// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <string>

#include "settings/codes.hpp"
#include "settings/detail/tables.hpp"

namespace bmc::settings {

namespace {

/* "5" or "8 to 11". */
std::string bytesText(std::size_t at, std::size_t size)
{
    if (size == 0) {
        return "none";
    }
    const std::string first = std::to_string(at);
    return size == 1 ? first : first + " to " + std::to_string(at + size - 1);
}

std::string bitText(const Part &part)
{
    char text[sizeof("word 0, 0x00000000")];
    std::snprintf(text, sizeof(text), "word %u, 0x%X", part.word, part.bit);
    return part.bit == 0 ? "none" : text;
}

} // namespace

void printCodes()
{
    std::puts("| Code | Name | Meaning | IPMI |\n|---|---|---|---|");
    for (const Code &code : codes()) {
        std::printf("| 0x%08X | `%s` | %s | 0x%02X |\n", code.value, std::string(code.name).c_str(),
                    std::string(code.meaning).c_str(), code.completion);
    }
}

void printCodesOfLibrary()
{
    for (const Code &code : codes()) {
        if (code.name.starts_with("NW_ERR_")) {
            std::printf(".It Dv %s\n0x%08X, %s\n", std::string(code.name).c_str(), code.value,
                        std::string(code.meaning).c_str());
        }
    }
}

void printBytesHead()
{
    std::puts("| Setting | Part | Change bit | Request | Record |\n|---|---|---|---|---|");
}

void printBytes(const Setting &setting)
{
    for (const Part &part : setting.parts) {
        std::printf("| `%s` | %s | %s | %s | %s |\n", setting.key, part.name, bitText(part).c_str(),
                    bytesText(part.request, part.requestSize).c_str(),
                    bytesText(part.record, part.size).c_str());
    }
}

} // namespace bmc::settings

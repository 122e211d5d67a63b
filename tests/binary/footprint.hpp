// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* How much of the library is code and constants. */
#ifndef FOOTPRINT_HPP
#define FOOTPRINT_HPP

#include <algorithm>

#include "elf_facts.hpp"

namespace binary {

/* Bytes of code, of constants, and of constants that the loader relocates and then protects; what
 * unwinding needs counts as constants. The loader's own tables and the variables do not count. */
inline bool isCodeOrConstants(const std::string &section)
{
    for (const char *counted : {".plt", ".text", ".rodata", ".eh_frame_hdr", ".eh_frame",
                                ".ARM.exidx", ".ARM.extab", ".data.rel.ro"}) {
        if (section == counted) {
            return true;
        }
    }
    return false;
}

inline std::uint64_t codeAndConstants(const ElfFacts &elf)
{
    std::uint64_t bytes = 0;
    for (const Section &section : elf.sections) {
        bytes += isCodeOrConstants(section.name) ? section.size : 0;
    }
    return bytes;
}

/* All that is loaded from the file: also the loader's tables and initial values. */
inline std::uint64_t loadedBytes(const ElfFacts &elf)
{
    std::uint64_t bytes = 0;
    for (const Segment &segment : elf.segments) {
        bytes += segment.type == "LOAD" ? segment.fileSize : 0;
    }
    return bytes;
}

/* Code and constants by name, the largest first. */
inline std::vector<Symbol> largestSymbols(const ElfFacts &elf)
{
    std::vector<Symbol> symbols;
    std::copy_if(elf.symbols.begin(), elf.symbols.end(), std::back_inserter(symbols),
                 [](const Symbol &symbol) { return isCodeOrConstants(symbol.section); });
    std::sort(symbols.begin(), symbols.end(), [](const Symbol &one, const Symbol &other) {
        return one.size != other.size ? one.size > other.size : one.name < other.name;
    });
    return symbols;
}

} // namespace binary

#endif

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "elf_facts.hpp"

#include <cxxabi.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "process.hpp"

namespace binary {
namespace {

using Words = std::vector<std::string>;

std::vector<Words> linesOf(const std::string &text)
{
    std::vector<Words> lines;
    std::istringstream input(text);
    for (std::string line; std::getline(input, line);) {
        std::replace(line.begin(), line.end(), ']', ' ');
        std::istringstream words(line);
        lines.emplace_back();
        for (std::string word; words >> word;) {
            lines.back().push_back(word);
        }
    }
    return lines;
}

std::uint64_t hex(const std::string &word)
{
    return std::stoull(word, nullptr, 16);
}

/* Type, offset, address, physical address, size in the file, in memory, flags (up to three words),
 * alignment. */
std::vector<Segment> segmentsIn(const std::string &text)
{
    std::vector<Segment> segments;
    for (const Words &words : linesOf(text)) {
        if (words.size() < 8 || !words[1].starts_with("0x")) {
            continue;
        }
        std::string flags;
        for (std::size_t i = 6; i + 1 < words.size(); ++i) {
            flags += words[i];
        }
        segments.push_back({words[0], hex(words[2]), hex(words[4]), hex(words[5]), flags});
    }
    return segments;
}

/* "[", number, name, type, address, offset, size, entry size, flags where there are any, three
 * numbers. The first section has no name and is kept for its number. */
std::vector<Section> sectionsIn(const std::string &text)
{
    std::vector<Section> sections;
    for (Words words : linesOf(text)) {
        if (words.empty() || !words[0].starts_with('[')) {
            continue;
        }
        if (words[0] == "[") {
            words.erase(words.begin());
        }
        if (words[0].find_first_of("0123456789") == std::string::npos) {
            continue; /* the heading */
        }
        if (sections.empty()) {
            sections.push_back({});
        } else {
            sections.push_back({words.at(1), hex(words.at(3)), hex(words.at(5)),
                                words.size() == 11 ? words[7] : ""});
        }
    }
    return sections;
}

/* Number, value, size, kind, binding, visibility, section, name. */
void readSymbols(const std::string &text, ElfFacts *elf)
{
    bool dynamic = false;
    for (const Words &words : linesOf(text)) {
        if (words.size() > 2 && words[0] == "Symbol") {
            dynamic = words[2] == "'.dynsym'";
        }
        if (words.size() < 8 || !words[0].ends_with(':') || words[0] == "Num:") {
            continue;
        }

        const std::string name = words[7].substr(0, words[7].find('@'));
        if (words[6] == "UND") {
            elf->imports.insert(name);
        } else if (dynamic && words[3] == "FUNC") {
            elf->exported.insert(name);
        } else if (!dynamic && words[6] != "ABS") {
            elf->symbols.push_back({demangled(name), words[3], std::stoull(words[2], nullptr, 0),
                                    elf->sections.at(std::stoul(words[6])).name});
        }
    }
}

bool within(const Section &section, const Segment &segment)
{
    return section.address >= segment.address &&
           section.address + section.size <= segment.address + segment.memorySize;
}

} // namespace

std::string demangled(const std::string &name)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
    return status == 0 ? text.get() : name;
}

ElfFacts readElf(const std::string &path)
{
    ElfFacts elf;
    elf.segments = segmentsIn(support::shell(NW_READELF " -lW " + path));
    elf.sections = sectionsIn(support::shell(NW_READELF " -SW " + path));
    readSymbols(support::shell(NW_READELF " -sW " + path), &elf);
    elf.dynamic = support::shell(NW_READELF " -d " + path);
    return elf;
}

const Segment &segmentOf(const ElfFacts &elf, const std::string &type)
{
    const auto isOfType = [&](const Segment &segment) { return segment.type == type; };
    if (std::count_if(elf.segments.begin(), elf.segments.end(), isOfType) != 1) {
        throw std::runtime_error("not exactly one segment " + type);
    }
    return *std::find_if(elf.segments.begin(), elf.segments.end(), isOfType);
}

std::vector<Section> writableSections(const ElfFacts &elf)
{
    const Segment &relro = segmentOf(elf, "GNU_RELRO");
    std::vector<Section> writable;
    for (const Section &section : elf.sections) {
        const bool isWritable = section.flags.find('W') != std::string::npos;
        if (isWritable && !within(section, relro)) {
            writable.push_back(section);
        }
    }
    return writable;
}

} // namespace binary

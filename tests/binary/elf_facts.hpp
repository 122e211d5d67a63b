// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a built library says of itself, as readelf prints it. */
#ifndef ELF_FACTS_HPP
#define ELF_FACTS_HPP

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace binary {

struct Segment {
    std::string type;
    std::uint64_t address;
    std::uint64_t fileSize;
    std::uint64_t memorySize;
    std::string flags; /* "R", "RW", "RE" */
};

struct Section {
    std::string name;
    std::uint64_t address;
    std::uint64_t size;
    std::string flags; /* readelf's letters: A loaded, W writable, X executable */
};

struct Symbol {
    std::string name; /* demangled */
    std::string kind; /* "FUNC", "OBJECT", ... */
    std::uint64_t size;
    std::string section;
};

struct ElfFacts {
    std::vector<Segment> segments;
    std::vector<Section> sections;
    std::vector<Symbol> symbols;    /* all that are defined, the file's own included */
    std::set<std::string> imports;  /* without their versions */
    std::set<std::string> exported; /* functions */
    std::string dynamic;            /* the dynamic section, as text */
};

ElfFacts readElf(const std::string &path);

/* A symbol's C++ name; a C name stays. */
std::string demangled(const std::string &name);

/* The only segment of this type; throws where there is another number of them. */
const Segment &segmentOf(const ElfFacts &elf, const std::string &type);

/* Loaded sections that the process can still write when the loader is done. */
std::vector<Section> writableSections(const ElfFacts &elf);

} // namespace binary

#endif

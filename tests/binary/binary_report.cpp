// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* binary_report TITLE LIBRARY OBJECT-LIST: the figures of docs/footprint.md for one build, as
 * Markdown. Reads any architecture's files. */
#include <cstdio>
#include <exception>

#include "footprint.hpp"
#include "stack_use.hpp"

namespace binary {
namespace {

constexpr std::size_t largestCount = 10;
constexpr std::uint64_t smallStack = 1024;

std::string withoutFile(const std::string &title)
{
    return title.substr(title.rfind(':') + 1);
}

unsigned long long number(std::uint64_t value)
{
    return value;
}

void printFootprint(const ElfFacts &elf)
{
    std::puts("\n| Section | Bytes |\n|---|---:|");
    for (const Section &section : elf.sections) {
        if (isCodeOrConstants(section.name)) {
            std::printf("| `%s` | %llu |\n", section.name.c_str(), number(section.size));
        }
    }
    std::printf("| **code and constants** | **%llu** |\n", number(codeAndConstants(elf)));
    std::printf("| all that is loaded from the file | %llu |\n", number(loadedBytes(elf)));
}

void printLargest(const ElfFacts &elf)
{
    const std::vector<Symbol> largest = largestSymbols(elf);

    std::puts("\n| Item | Section | Bytes |\n|---|---|---:|");
    for (std::size_t i = 0; i < largestCount && i < largest.size(); ++i) {
        std::printf("| `%s` | `%s` | %llu |\n", largest[i].name.c_str(), largest[i].section.c_str(),
                    number(largest[i].size));
    }
}

void printStack(const ElfFacts &elf, StackUse stack)
{
    std::vector<Depth> deepest;
    for (const std::string &name : elf.exported) {
        if (stack.below(name).bytes > smallStack) {
            deepest.push_back(stack.below(name));
        }
    }
    std::sort(deepest.begin(), deepest.end(), [](const Depth &one, const Depth &other) {
        return one.bytes != other.bytes ? one.bytes > other.bytes : one.path < other.path;
    });

    std::puts("\n| Function | Bytes | Own frame | Largest frame below it |\n|---|---:|---:|---|");
    for (const Depth &depth : deepest) {
        const auto frame = [&](const std::string &title) {
            return stack.functions().at(title).frame;
        };
        const std::string largest = *std::max_element(
            depth.path.begin() + (depth.path.size() > 1 ? 1 : 0), depth.path.end(),
            [&](const std::string &one, const std::string &other) {
                return frame(one) < frame(other);
            });
        std::printf("| `%s` | %llu | %llu | `%s`, %llu |\n", depth.path.front().c_str(),
                    number(depth.bytes), number(frame(depth.path.front())),
                    demangled(withoutFile(largest)).c_str(), number(frame(largest)));
    }
}

} // namespace
} // namespace binary

int main(int argc, char **argv)
{
    if (argc != 4) {
        std::fputs("usage: binary_report TITLE LIBRARY OBJECT-LIST\n", stderr);
        return 2;
    }
    try {
        const binary::ElfFacts elf = binary::readElf(argv[2]);
        std::printf("## %s\n\n### Code and constants\n", argv[1]);
        binary::printFootprint(elf);
        std::puts("\n### The ten largest items");
        binary::printLargest(elf);
        std::puts("\n### Stack");
        binary::printStack(elf, binary::StackUse(argv[3]));
    } catch (const std::exception &fault) {
        std::fprintf(stderr, "binary_report: %s\n", fault.what());
        return 1;
    }
    return 0;
}

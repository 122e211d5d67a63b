// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the measure of the library's size counts. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "footprint.hpp"

namespace binary {
namespace {

/* No loaded section is forgotten: each is counted, a variable's, or the loader's. */
TEST(Footprint, CountsEverySection)
{
    const std::set<std::string> loader{
        ".note.gnu.build-id", ".gnu.hash",      ".dynsym",  ".dynstr",           ".gnu.version",
        ".gnu.version_d",     ".gnu.version_r", ".rel.dyn", ".rela.dyn",         ".rel.plt",
        ".rela.plt",          ".dynamic",       ".got",     ".note.gnu.property"};
    const ElfFacts elf = readElf(NW_LIBRARY_FILE);
    std::set<std::string> variables;
    for (const Section &section : writableSections(elf)) {
        variables.insert(section.name);
    }

    for (const Section &section : elf.sections) {
        if (section.flags.find('A') != std::string::npos) {
            EXPECT_TRUE(isCodeOrConstants(section.name) || loader.contains(section.name) ||
                        variables.contains(section.name))
                << section.name;
        }
    }
}

} // namespace
} // namespace binary

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "rows.hpp"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <set>
#include <string_view>

namespace support {
namespace {

struct LaterSet {
    AddSet add;
    Place place;
};

// Filled while the program's variables are made, in any order of files.
std::vector<LaterSet> &laterSets()
{
    static std::vector<LaterSet> sets;
    return sets;
}

std::deque<RowTable> &tables()
{
    static std::deque<RowTable> tables;
    return tables;
}

[[noreturn]] void refuse(const Place &place, const std::string &fixture, const std::string &why)
{
    std::fprintf(stderr, "%s:%d: %s/%s: %s\n", place.file, place.line, place.name, fixture.c_str(),
                 why.c_str());
    std::exit(EXIT_FAILURE);
}

bool isName(const std::string &text)
{
    return !text.empty() && std::ranges::all_of(text, [](unsigned char character) {
        return std::isalnum(character) != 0 || character == '_';
    });
}

} // namespace

RowTable &RowTable::of(const char *fixture, Register registered)
{
    const auto found = std::ranges::find_if(tables(), [&](const RowTable &table) {
        return table.register_ == registered && table.fixture_ == std::string_view(fixture);
    });
    return found != tables().end() ? *found : tables().emplace_back(fixture, registered);
}

bool RowTable::addTest(const Place &place, Make make)
{
    tests_.push_back({place, make});
    return true;
}

void RowTable::addRows(const Place &set, const std::vector<Row> &rows)
{
    std::set<std::string> names;
    for (const Row &row : rows) {
        if (!isName(row.name) || !names.insert(row.name).second) {
            refuse(set, fixture_, "no row can be called \"" + row.name + "\", or not twice");
        }
    }
    if (tests_.empty() || rows.empty()) {
        refuse(set, fixture_, tests_.empty() ? "rows without a test" : "no rows");
    }
    hasRows_ = true;

    const std::string suite = std::string(set.name) + "/" + fixture_;
    for (const Test &test : tests_) {
        for (const Row &row : rows) {
            register_(suite, std::string(test.place.name) + "/" + row.name, test.place,
                      test.make(row.row));
        }
    }
}

void RowTable::requireRows() const
{
    if (!hasRows_) {
        refuse(tests_.front().place, fixture_, "a test without rows");
    }
}

bool addLater(AddSet add, const Place &set)
{
    laterSets().push_back({add, set});
    return true;
}

void registerRows()
{
    for (const LaterSet &set : laterSets()) {
        set.add(set.place);
    }
    for (const RowTable &table : tables()) {
        table.requireRows();
    }
}

} // namespace support

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Tests of a table's rows, written as the framework has it:
 *     TEST_P(Fixture, Case) { ... GetParam() ... }
 *     INSTANTIATE_TEST_SUITE_P(Prefix, Fixture, testing::Values(Row{...}, ...), fake::RowName{});
 * The framework would make about 700 functions for each kind of row, half of what the compiler made
 * of the library's tests. Here rows are a vector, and each is registered as a test of its own when
 * the program starts. Names, and the order within a set, are the framework's. */
#ifndef ROWS_HPP
#define ROWS_HPP

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace testing {

/* Overloads that are preferred for rows of one kind. */
template <class Row, std::same_as<Row>... More>
std::vector<Row> Values(const Row &first, const More &...more)
{
    return {first, more...};
}

template <class Row>
std::vector<Row> ValuesIn(const std::vector<Row> &rows)
{
    return rows;
}

template <class Row, std::size_t count>
requires std::copyable<Row> std::vector<Row> ValuesIn(const Row (&rows)[count])
{
    return {rows, rows + count};
}

} // namespace testing

namespace support {

/* What a test or a set of rows is called, and where it stands. */
struct Place {
    const char *name;
    const char *file;
    int line;
};

/* The tests of a fixture, each of which gets every row. */
class RowTable {
public:
    using Factory = std::shared_ptr<testing::internal::TestFactoryBase>;
    using Make = Factory (*)(const void *row); // of a test, for a row that it copies
    using Register = void (*)(const std::string &suite, const std::string &name, const Place &place,
                              const Factory &factory);

    struct Row {
        std::string name; // of letters, digits and "_", once in a set
        const void *row;
    };

    RowTable(const char *fixture, Register registered) : fixture_(fixture), register_(registered) {}

    /* That of a fixture by this name. */
    static RowTable &of(const char *fixture, Register registered);

    bool addTest(const Place &place, Make make);
    void addRows(const Place &set, const std::vector<Row> &rows);
    /* A test that would never run ends the program. */
    void requireRows() const;

private:
    struct Test {
        Place place;
        Make make;
    };

    const char *fixture_;
    Register register_;
    std::vector<Test> tests_;
    bool hasRows_ = false;
};

/* A set of rows that may be made when all of the program's variables are. */
using AddSet = void (*)(const Place &set);
bool addLater(AddSet add, const Place &set);
/* Makes the sets and registers their tests; main() calls it. */
void registerRows();

template <class Fixture>
void registerTest(const std::string &suite, const std::string &name, const Place &place,
                  const RowTable::Factory &factory)
{
    testing::RegisterTest(suite.c_str(), name.c_str(), nullptr, nullptr, place.file, place.line,
                          [factory] { return static_cast<Fixture *>(factory->CreateTest()); });
}

template <class Test>
RowTable::Factory makeFactory(const void *row)
{
    return RowTable::Factory(new testing::internal::ParameterizedTestFactory<Test>(
        *static_cast<const typename Test::ParamType *>(row)));
}

template <class Test>
bool addTest(const char *fixture, const Place &place)
{
    return RowTable::of(fixture, registerTest<typename Test::Fixture>)
        .addTest(place, makeFactory<Test>);
}

struct RowIndex {
    template <class Row>
    std::string operator()(const testing::TestParamInfo<Row> &row) const
    {
        return std::to_string(row.index);
    }
};

template <class Fixture, class Given, class Name = RowIndex>
void addRows(const char *fixture, const Place &set, const std::vector<Given> &given,
             const Name &name = {})
{
    using Value = typename Fixture::ParamType;
    static_assert(!std::same_as<Value, bool>, "a vector of bool has no rows to point at");
    const std::vector<Value> values(given.begin(), given.end());
    std::vector<RowTable::Row> rows;
    for (const Value &value : values) {
        rows.push_back({name(testing::TestParamInfo<Value>(value, rows.size())), &value});
    }
    RowTable::of(fixture, registerTest<Fixture>).addRows(set, rows);
}

/* Rows of other kinds, as Combine() and Range() make them. */
template <class Fixture, class Name = RowIndex>
void addRows(const char *fixture, const Place &set,
             const testing::internal::ParamGenerator<typename Fixture::ParamType> &given,
             const Name &name = {})
{
    const std::vector<typename Fixture::ParamType> rows(given.begin(), given.end());
    addRows<Fixture>(fixture, set, rows, name);
}

} // namespace support

#undef TEST_P
#define TEST_P(fixture, test)                                                                      \
    class GTEST_TEST_CLASS_NAME_(fixture, test) : public fixture {                                 \
    public:                                                                                        \
        using Fixture = fixture;                                                                   \
                                                                                                   \
    private:                                                                                       \
        void TestBody() override;                                                                  \
        static const bool added_;                                                                  \
    };                                                                                             \
    const bool GTEST_TEST_CLASS_NAME_(fixture, test)::added_ =                                     \
        support::addTest<GTEST_TEST_CLASS_NAME_(fixture, test)>(#fixture,                          \
                                                                {#test, __FILE__, __LINE__});      \
    void GTEST_TEST_CLASS_NAME_(fixture, test)::TestBody()

#undef INSTANTIATE_TEST_SUITE_P
#define INSTANTIATE_TEST_SUITE_P(prefix, fixture, ...)                                             \
    [[maybe_unused]] static const bool rows_##prefix##_##fixture = support::addLater(              \
        [](const support::Place &set_) {                                                           \
            support::addRows<fixture>(#fixture, set_, __VA_ARGS__);                                \
        },                                                                                         \
        {#prefix, __FILE__, __LINE__})

#endif

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What a command answers: rows, described once and printed as text or as JSON. */
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <ranges>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include <nlohmann/json_fwd.hpp>

namespace nwctl {

struct Row;
using Rows = std::vector<Row>;

/* A JSON object, whose members are the rows with a key. */
struct Object {
    Rows rows;
};
/* A JSON array of the rows' values. */
struct List {
    Rows rows;
};

template <typename Range>
concept ListOfValues = std::ranges::range<Range> && !std::convertible_to<Range, std::string_view>;

class Value {
public:
    Value();
    Value(const Value &other);
    Value(Value &&other) noexcept;
    Value &operator=(const Value &other);
    Value &operator=(Value &&other) noexcept;
    ~Value();

    Value(std::nullptr_t);
    Value(bool isOn);
    Value(int number);
    Value(unsigned number);
    Value(long number);
    Value(long long number);
    Value(const char *text);
    Value(std::string text);
    Value(std::string_view text);
    Value(Object object);
    Value(List list);
    template <typename Type>
    Value(const std::optional<Type> &value);
    template <ListOfValues Range>
    Value(const Range &values);
    /* A value out of the configuration. */
    explicit Value(const nlohmann::ordered_json &json);

    const auto &content() const
    {
        return content_;
    }

private:
    std::variant<std::nullptr_t, bool, long long, std::string, Object, List> content_;
};

/* As text, a row with a label is a line of a table: true and false are shown as enabled and
 * disabled, null as "-", a list with commas. The rows of its value stand below it, further to the
 * right. A row without a label is the line of its text, or no line; an object without either in a
 * list is a block. In JSON, the value has the key; without a key it is left out. */
struct Row {
    std::string label{};
    std::string key{};
    Value value{};
    std::string text{};    /* shown in the value's place */
    bool isFolded = false; /* the rows of the value are shown in JSON alone */
};

template <typename Type>
Value::Value(const std::optional<Type> &value)
{
    if (value) {
        *this = Value(*value);
    }
}

template <ListOfValues Range>
Value::Value(const Range &values)
{
    List list;
    for (const auto &value : values) {
        list.rows.push_back({.value = Value(value)});
    }
    content_ = std::move(list);
}

/* A line without a value of its own, and a value without a line. */
Row line(std::string text);
Row hidden(std::string key, Value value);
/* The text, null for an empty one. */
Value textOrNull(const std::string &text);

/* "enabled" or "disabled" */
std::string onOff(bool isOn);
/* "52:54:00:12:34:56", of six bytes. */
std::string macText(const std::uint8_t *address);

std::string textOf(const Rows &rows);
/* With its line end. */
std::string documentOf(const Rows &rows);

} // namespace nwctl

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "nwctl/output.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

#include <nlohmann/json.hpp>

#include "common/text.hpp"

namespace nwctl {

namespace {

using Json = nlohmann::ordered_json;

template <typename... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};

template <typename... Visitors>
auto visit(const Value &value, Visitors... visitors)
{
    return std::visit(Overloaded<Visitors...>{visitors...}, value.content());
}

std::string shown(const Value &value);

std::string shownList(const Rows &rows)
{
    std::string list;
    for (const Row &row : rows) {
        list += (list.empty() ? "" : ", ") + shown(row.value);
    }
    return list.empty() ? "none" : list;
}

std::string shown(const Value &value)
{
    return visit(
        value, [](std::nullptr_t) { return std::string("-"); },
        [](bool isOn) { return onOff(isOn); },
        [](long long number) { return std::to_string(number); },
        [](const std::string &text) { return bmc::escaped(text); },
        [](const Object &) { return std::string(); },
        [](const List &list) { return shownList(list.rows); });
}

void printRow(const Row &row, std::size_t indent, std::string &text);

void printRows(const Rows &rows, std::size_t indent, std::string &text)
{
    for (const Row &row : rows) {
        printRow(row, indent, text);
    }
}

/* Blocks with an empty line between them. */
void printList(const Rows &rows, std::size_t indent, std::string &text)
{
    bool isFirst = true;
    for (const Row &row : rows) {
        const bool isBlock = row.label.empty() && row.text.empty() &&
                             std::holds_alternative<Object>(row.value.content());
        text += isBlock && !isFirst ? "\n" : "";
        printRow(row, indent, text);
        isFirst = false;
    }
}

void printLine(const Row &row, std::size_t indent, std::string &text)
{
    constexpr std::size_t labelWidth = 16;
    if (row.label.empty()) {
        text += row.text.empty() ? "" : bmc::escaped(row.text) + "\n";
        return;
    }
    std::string label = std::string(indent + 2, ' ') + bmc::escaped(row.label);
    label.resize(std::max(labelWidth, label.size() + 1), ' ');
    text += label + (row.text.empty() ? shown(row.value) : bmc::escaped(row.text)) + "\n";
}

void printRow(const Row &row, std::size_t indent, std::string &text)
{
    printLine(row, indent, text);
    if (row.isFolded) {
        return;
    }
    const std::size_t below = indent + (row.label.empty() ? 0 : 2);
    if (const auto *object = std::get_if<Object>(&row.value.content())) {
        printRows(object->rows, below, text);
    } else if (const auto *list = std::get_if<List>(&row.value.content())) {
        printList(list->rows, below, text);
    }
}

Json jsonOf(const Value &value);

Json objectOf(const Rows &rows)
{
    Json object = Json::object();
    for (const Row &row : rows) {
        if (!row.key.empty()) {
            object[row.key] = jsonOf(row.value);
        }
    }
    return object;
}

Json arrayOf(const Rows &rows)
{
    Json array = Json::array();
    for (const Row &row : rows) {
        array.push_back(jsonOf(row.value));
    }
    return array;
}

Json jsonOf(const Value &value)
{
    return visit(
        value, [](const Object &object) { return objectOf(object.rows); },
        [](const List &list) { return arrayOf(list.rows); },
        [](const auto &scalar) { return Json(scalar); });
}

} // namespace

Value::Value() = default;
Value::Value(const Value &other) = default;
Value::Value(Value &&other) noexcept = default;
Value &Value::operator=(const Value &other) = default;
Value &Value::operator=(Value &&other) noexcept = default;
Value::~Value() = default;

Value::Value(std::nullptr_t) {}

Value::Value(bool isOn) : content_(isOn) {}

Value::Value(int number) : content_(static_cast<long long>(number)) {}

Value::Value(unsigned number) : content_(static_cast<long long>(number)) {}

Value::Value(long number) : content_(static_cast<long long>(number)) {}

Value::Value(long long number) : content_(number) {}

Value::Value(const char *text) : content_(std::string(text)) {}

Value::Value(std::string text) : content_(std::move(text)) {}

Value::Value(std::string_view text) : content_(std::string(text)) {}

Value::Value(Object object) : content_(std::move(object)) {}

Value::Value(List list) : content_(std::move(list)) {}

Value::Value(const Json &json)
{
    if (json.is_boolean()) {
        content_ = json.get<bool>();
    } else if (json.is_number_integer()) {
        content_ = json.get<long long>();
    } else if (json.is_string()) {
        content_ = json.get<std::string>();
    } else if (json.is_array()) {
        *this = Value(std::vector<Json>(json.begin(), json.end()));
    } else if (json.is_object()) {
        Rows rows;
        for (const auto &[key, value] : json.items()) {
            rows.push_back(hidden(key, Value(value)));
        }
        *this = Object{std::move(rows)};
    } else if (!json.is_null()) {
        content_ = json.dump();
    }
}

Row line(std::string text)
{
    return {.text = std::move(text)};
}

Row hidden(std::string key, Value value)
{
    return {.key = std::move(key), .value = std::move(value), .isFolded = true};
}

Value textOrNull(const std::string &text)
{
    return text.empty() ? Value() : Value(text);
}

std::string onOff(bool isOn)
{
    return isOn ? "enabled" : "disabled";
}

std::string macText(const std::uint8_t *address)
{
    std::array<char, sizeof("00:11:22:33:44:55")> text{};
    std::snprintf(text.data(), text.size(), "%02x:%02x:%02x:%02x:%02x:%02x", address[0], address[1],
                  address[2], address[3], address[4], address[5]);
    return text.data();
}

std::string textOf(const Rows &rows)
{
    std::string text;
    printRows(rows, 0, text);
    return text;
}

std::string documentOf(const Rows &rows)
{
    constexpr int indentation = 2;
    return objectOf(rows).dump(indentation, ' ', true, Json::error_handler_t::replace) + "\n";
}

} // namespace nwctl

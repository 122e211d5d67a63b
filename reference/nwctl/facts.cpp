// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "facts.hpp"

#include "text.hpp"

namespace nwctl {

namespace {

std::string shown(const Json &value)
{
    if (value.is_string()) {
        return escaped(value.get<std::string>());
    }
    if (value.is_boolean()) {
        return onOff(value.get<bool>());
    }
    if (value.is_array()) {
        std::string list;
        for (const Json &item : value) {
            list += (list.empty() ? "" : ", ") + shown(item);
        }
        return list.empty() ? "none" : list;
    }
    return value.is_null() ? "-" : value.dump();
}

} // namespace

std::string factsText(const Facts &facts)
{
    std::string text;
    for (const Fact &fact : facts) {
        text += labelled(fact.label, shown(fact.value));
    }
    return text;
}

Json factsJson(const Facts &facts)
{
    Json document = Json::object();
    for (const Fact &fact : facts) {
        document[fact.key] = fact.value;
    }
    return document;
}

void printFacts(Session &session, const Facts &facts)
{
    session.answer(factsJson(facts), factsText(facts));
}

void printPorts(Session &session, const std::vector<Facts> &ports)
{
    std::string text;
    Json documents = Json::array();
    for (const Facts &facts : ports) {
        text += (text.empty() ? "" : "\n") + factsText(facts);
        documents.push_back(factsJson(facts));
    }
    session.answer(Json{{"ports", documents}}, text);
}

Json textOrNull(const std::string &text)
{
    return text.empty() ? Json() : Json(text);
}

} // namespace nwctl

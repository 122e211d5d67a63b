// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "chassis/object_file.hpp"

#include "chassis/chassis_log.hpp"
#include "common/files.hpp"

namespace bmc::chassis {

namespace {

/* Files of ours are shorter and nested less deeply; others are none. */
constexpr std::size_t longest = 1U << 20;
constexpr int deepest = 16;

/* What the text says; discarded when it is not JSON or nested too deeply. */
Json parseShallow(const std::string &text)
{
    bool tooDeep = false;
    const auto watch = [&](int depth, Json::parse_event_t, const Json &) {
        tooDeep = tooDeep || depth > deepest;
        return !tooDeep;
    };
    Json parsed = Json::parse(text, watch, false);
    return tooDeep ? Json() : parsed;
}

/* The file's value; null when it cannot be read. */
Json valueOf(const std::filesystem::path &path)
{
    try {
        const auto text = findFile(path, longest);
        return text ? parseShallow(*text) : Json::object();
    } catch (const std::system_error &) {
        return nullptr;
    }
}

} // namespace

Json loadObject(const std::filesystem::path &path)
{
    Json object = valueOf(path);
    if (!object.is_object()) {
        log(Level::error, path.string() + " holds no JSON object and is begun anew");
        return Json::object();
    }
    return object;
}

void storeObject(const std::filesystem::path &path, const Json &object)
{
    constexpr int indentation = 2;
    constexpr mode_t everybodyReads = 0644;
    replaceFile(path, object.dump(indentation) + '\n', everybodyReads);
}

} // namespace bmc::chassis

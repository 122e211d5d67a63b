// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "json_file.hpp"

#include <fstream>
#include <stdexcept>

#include "chassis_log.hpp"

namespace bmc::chassis {

namespace {

/* Files of ours are nested less deeply; a deeper one is none. */
constexpr int deepest = 16;

/* What the file holds; discarded when it is not JSON or nested too deeply. */
Json parseShallow(std::istream &file)
{
    bool tooDeep = false;
    const auto watch = [&](int depth, Json::parse_event_t, const Json &) {
        tooDeep = tooDeep || depth > deepest;
        return !tooDeep;
    };
    Json parsed = Json::parse(file, watch, false);
    return tooDeep ? Json() : parsed;
}

} // namespace

Json loadObject(const std::filesystem::path &path)
{
    std::ifstream file(path);
    if (!file) {
        return Json::object();
    }

    Json object = parseShallow(file);
    if (!object.is_object()) {
        log(Level::error, path.string() + " holds no JSON object and is begun anew");
        return Json::object();
    }
    return object;
}

void storeObject(const std::filesystem::path &path, const Json &object)
{
    constexpr int indentation = 2;
    const std::filesystem::path draft = path.string() + ".new";

    std::ofstream file(draft);
    file << object.dump(indentation) << '\n';
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + draft.string());
    }
    std::filesystem::rename(draft, path);
}

} // namespace bmc::chassis

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "platform/json_file.hpp"

#include <cerrno>

#include "common/files.hpp"

namespace bmc {

nlohmann::json readJson(const std::filesystem::path &path)
{
    constexpr std::size_t limit = 1U << 20;
    const std::string text = readFile(path, limit);
    try {
        return nlohmann::json::parse(text);
    } catch (const nlohmann::json::exception &error) {
        throw Failure(EBADMSG, path.string() + ": " + error.what());
    }
}

} // namespace bmc

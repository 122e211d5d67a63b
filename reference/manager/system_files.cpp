// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "system_files.hpp"

#include <fstream>
#include <sstream>
#include <system_error>

#include "refusal.hpp"

namespace bmc::manager {

namespace {

void write(const std::filesystem::path &path, const std::string &content)
{
    std::filesystem::create_directories(path.parent_path());
    std::filesystem::path draft = path;
    draft += ".new";
    std::ofstream file(draft, std::ios::binary | std::ios::trunc);
    file << content;
    file.close();
    if (!file) {
        throw std::filesystem::filesystem_error("cannot write", draft,
                                                std::make_error_code(std::errc::io_error));
    }
    std::filesystem::rename(draft, path);
}

} // namespace

std::optional<std::string> contentOf(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return std::nullopt;
    }
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

void replaceFile(const std::filesystem::path &path, const std::optional<std::string> &content)
{
    try {
        if (content) {
            write(path, *content);
        } else {
            std::filesystem::remove(path);
        }
    } catch (const std::filesystem::filesystem_error &error) {
        throw Refusal(static_cast<std::uint32_t>(Result::systemFailed), error.what());
    }
}

void restoreLater(const std::filesystem::path &path, Transaction &transaction)
{
    transaction.undoWith([path, former = contentOf(path)] { replaceFile(path, former); });
}

} // namespace bmc::manager

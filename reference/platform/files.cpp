// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "files.hpp"

#include <array>
#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>

namespace bmc {

namespace {

constexpr std::size_t jsonLimit = 1U << 20;

[[noreturn]] void fail(const std::filesystem::path &path, int error)
{
    throw Failure(error, path.string() + ": " + errnoText(error),
                  error == ENOENT ? Level::information : Level::error);
}

/* A new file beside the one it is to replace; removed unless it took its place. */
class Replacement {
public:
    explicit Replacement(const std::filesystem::path &target)
        : m_target(target), m_name(target.string() + ".XXXXXX"),
          m_file(mkostemp(m_name.data(), O_CLOEXEC))
    {
        if (!m_file) {
            fail(m_target, errno);
        }
    }

    Replacement(const Replacement &) = delete;
    Replacement &operator=(const Replacement &) = delete;

    ~Replacement()
    {
        if (!m_done) {
            unlink(m_name.c_str());
        }
    }

    void write(std::string_view bytes)
    {
        while (!bytes.empty()) {
            const ssize_t written = ::write(m_file.get(), bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR) {
                fail(m_target, errno);
            }
            bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
        }
    }

    void takePlace()
    {
        constexpr mode_t readable = 0644;
        if (fchmod(m_file.get(), readable) != 0 || fsync(m_file.get()) != 0 ||
            rename(m_name.c_str(), m_target.c_str()) != 0) {
            fail(m_target, errno);
        }
        m_done = true;
    }

private:
    std::filesystem::path m_target;
    std::string m_name;
    Descriptor m_file;
    bool m_done = false;
};

} // namespace

std::string readFile(const std::filesystem::path &path, std::size_t limit)
{
    /* A pipe in the file's place must not block. */
    const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file) {
        fail(path, errno);
    }

    std::string bytes;
    std::array<char, 4096> part;
    while (bytes.size() < limit) {
        const std::size_t wanted = std::min(part.size(), limit - bytes.size());
        const ssize_t length = read(file.get(), part.data(), wanted);
        if (length < 0 && errno != EINTR) {
            fail(path, errno);
        }
        if (length == 0) {
            break;
        }
        bytes.append(part.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    }
    return bytes;
}

void replaceFile(const std::filesystem::path &path, std::string_view bytes)
{
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (error) {
        fail(path, error.value());
    }

    Replacement replacement(path);
    replacement.write(bytes);
    replacement.takePlace();
}

nlohmann::json readJson(const std::filesystem::path &path)
{
    const std::string text = readFile(path, jsonLimit);
    try {
        return nlohmann::json::parse(text);
    } catch (const nlohmann::json::exception &error) {
        throw Failure(EBADMSG, path.string() + ": " + error.what());
    }
}

} // namespace bmc

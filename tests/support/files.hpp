// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Files and descriptors that tests on a real system need.
#pragma once

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sched.h>
#include <stdexcept>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

namespace support {

inline void writeFile(const std::filesystem::path &path, const std::string &content)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    if (!(file << content << std::flush)) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

inline std::string readFile(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// What this process mounts from here on is seen by itself and its children alone.
inline void separateMounts()
{
    if (unshare(CLONE_NEWNS) != 0 ||
        mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
        throw std::runtime_error("no mount namespace");
    }
}

// Lays a file or directory over another one; behind separateMounts.
inline void bindOver(const std::filesystem::path &source, const std::filesystem::path &target)
{
    if (mount(source.c_str(), target.c_str(), nullptr, MS_BIND | MS_REC, nullptr) != 0) {
        throw std::runtime_error("cannot bind over " + target.string());
    }
}

// Lays an empty file system in memory over a directory; behind separateMounts.
inline void mountMemory(const std::filesystem::path &target)
{
    if (mount("tmpfs", target.c_str(), "tmpfs", 0, "mode=755") != 0) {
        throw std::runtime_error("cannot mount over " + target.string());
    }
}

class TemporaryDirectory {
public:
    TemporaryDirectory()
    {
        std::string pattern = std::filesystem::temp_directory_path() / "nw-test-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("no temporary directory");
        }
        path_ = pattern;
    }
    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    std::filesystem::path operator/(const std::string &name) const
    {
        return path_ / name;
    }
    const std::filesystem::path &path() const
    {
        return path_;
    }

private:
    std::filesystem::path path_;
};

// The lowest free descriptor; the same before and after whatever leaves none open.
inline int lowestFreeDescriptor()
{
    const int descriptor = dup(STDERR_FILENO);
    close(descriptor);
    return descriptor;
}

inline std::chrono::milliseconds durationOf(const auto &action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                                 start);
}

} // namespace support

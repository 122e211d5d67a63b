// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager/system/files.hpp"

#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "manager/state/actual.hpp"

namespace bmc::manager {

namespace {

[[noreturn]] void fail(const std::filesystem::path &path, int code)
{
    throw MachineError(path.string() + ": " + std::generic_category().message(code));
}

/* A regular file, or nothing: what else stands under the name would be waited for. */
class File {
public:
    File(const std::filesystem::path &path, int flags)
        : descriptor_(open(path.c_str(), flags | O_NONBLOCK | O_CLOEXEC, 0644))
    {
        struct stat status {};
        if (descriptor_ >= 0 && (fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode))) {
            close(descriptor_);
            descriptor_ = -1;
            errno = EINVAL;
        }
    }
    ~File()
    {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;

    explicit operator bool() const
    {
        return descriptor_ >= 0;
    }

    bool writeAll(const std::string &content) const
    {
        return write(descriptor_, content.data(), content.size()) ==
                   static_cast<ssize_t>(content.size()) &&
               fsync(descriptor_) == 0;
    }

    std::string readAll() const
    {
        std::string content;
        std::array<char, 4096> piece{};
        for (ssize_t got; (got = read(descriptor_, piece.data(), piece.size())) > 0;) {
            content.append(piece.data(), static_cast<std::size_t>(got));
        }
        return content;
    }

private:
    int descriptor_;
};

void write(const std::filesystem::path &path, const std::string &content)
{
    std::filesystem::path draft = path;
    draft += ".new";
    const File file(draft, O_WRONLY | O_CREAT | O_TRUNC);
    if (!file || !file.writeAll(content) || rename(draft.c_str(), path.c_str()) != 0) {
        const int code = errno;
        unlink(draft.c_str());
        fail(draft, code);
    }
}

} // namespace

std::string contentOf(const std::filesystem::path &path)
{
    const File file(path, O_RDONLY);
    return file ? file.readAll() : "";
}

void replaceFile(const std::filesystem::path &path, const std::string &content)
{
    if (content.empty()) {
        if (unlink(path.c_str()) != 0 && errno != ENOENT && errno != ENOTDIR) {
            fail(path, errno);
        }
        return;
    }
    std::error_code error;
    std::filesystem::create_directories(path.parent_path(), error);
    if (error) {
        throw MachineError(path.string() + ": " + error.message());
    }
    write(path, content);
}

} // namespace bmc::manager

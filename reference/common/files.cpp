// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/files.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "common/descriptor.hpp"

namespace bmc {

namespace {

constexpr std::string_view draftSuffix = ".new";

/* "resolv.conf.1234.new" of thread 1234. */
std::string draftName(const std::filesystem::path &target)
{
    return target.string() + "." + std::to_string(gettid()) + std::string(draftSuffix);
}

/* Whether a name is that of a draft whose thread has died. */
bool isAbandoned(std::string_view name, std::string_view target)
{
    if (!name.starts_with(target) || !name.ends_with(draftSuffix) ||
        name.size() <= target.size() + 1 + draftSuffix.size() || name[target.size()] != '.') {
        return false;
    }
    const std::string_view digits =
        name.substr(target.size() + 1, name.size() - target.size() - 1 - draftSuffix.size());
    pid_t thread = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), thread);
    return error == std::errc{} && end == digits.end() && thread > 0 && kill(thread, 0) != 0 &&
           errno == ESRCH;
}

void removeAbandoned(const std::filesystem::path &target)
{
    const std::string name = target.filename().string();
    std::error_code ignored; /* tidiness is no reason to fail */
    for (const auto &entry : std::filesystem::directory_iterator(target.parent_path(), ignored)) {
        if (isAbandoned(entry.path().filename().string(), name)) {
            unlink(entry.path().c_str());
        }
    }
}

/* A new file beside the one it is to replace; removed unless it took its place. */
class Draft {
public:
    explicit Draft(const std::filesystem::path &target)
        : target_(target), name_(draftName(target)), file_(create(name_))
    {
        if (!file_) {
            failFile(name_, errno);
        }
    }

    Draft(const Draft &) = delete;
    Draft &operator=(const Draft &) = delete;

    ~Draft()
    {
        if (!isDone_) {
            unlink(name_.c_str());
        }
    }

    void write(std::string_view bytes)
    {
        while (!bytes.empty()) {
            const ssize_t written = ::write(file_.get(), bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR) {
                failFile(target_, errno);
            }
            bytes.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
        }
    }

    void takePlace(mode_t mode)
    {
        if (fchmod(file_.get(), mode) != 0 || fsync(file_.get()) != 0 ||
            rename(name_.c_str(), target_.c_str()) != 0) {
            failFile(target_, errno);
        }
        isDone_ = true;
    }

private:
    /* Whatever has the name already is left from an earlier thread of the same number. */
    static int create(const std::string &name)
    {
        constexpr mode_t ownersAlone = 0600;
        unlink(name.c_str());
        return open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                    ownersAlone);
    }

    std::filesystem::path target_;
    std::string name_;
    Descriptor file_;
    bool isDone_ = false;
};

std::filesystem::path directoryOf(const std::filesystem::path &path)
{
    return path.has_parent_path() ? path.parent_path() : ".";
}

Descriptor openRegular(const std::filesystem::path &path)
{
    Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status {};
    if (!file || fstat(file.get(), &status) != 0) {
        failFile(path, errno);
    }
    if (!S_ISREG(status.st_mode)) {
        if (S_ISDIR(status.st_mode)) {
            failFile(path, EISDIR);
        }
        failFile(path.string() + " is no regular file", EINVAL);
    }
    return file;
}

} // namespace

void failFile(const std::filesystem::path &path, int error)
{
    throw std::system_error(error, std::generic_category(), path.string());
}

std::string readStart(const std::filesystem::path &path, std::size_t limit)
{
    const Descriptor file = openRegular(path);
    std::string bytes;
    std::array<char, 4096> part;
    while (bytes.size() < limit) {
        const std::size_t wanted = std::min(part.size(), limit - bytes.size());
        const ssize_t length = read(file.get(), part.data(), wanted);
        if (length < 0 && errno != EINTR) {
            failFile(path, errno);
        }
        if (length == 0) {
            break;
        }
        bytes.append(part.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    }
    return bytes;
}

std::string readFile(const std::filesystem::path &path, std::size_t limit)
{
    std::string bytes = readStart(path, limit + 1);
    if (bytes.size() > limit) {
        failFile(path, EFBIG);
    }
    return bytes;
}

std::optional<std::string> findFile(const std::filesystem::path &path, std::size_t limit)
{
    try {
        return readFile(path, limit);
    } catch (const std::system_error &error) {
        if (error.code() != std::errc::no_such_file_or_directory) {
            throw;
        }
        return std::nullopt;
    }
}

void replaceFile(const std::filesystem::path &path, std::string_view bytes, mode_t mode)
{
    const std::filesystem::path directory = directoryOf(path);
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        failFile(directory, error.value());
    }

    removeAbandoned(directory / path.filename());
    Draft draft(path);
    draft.write(bytes);
    draft.takePlace(mode);
    syncDirectory(directory);
}

void removeFile(const std::filesystem::path &path)
{
    if (unlink(path.c_str()) == 0) {
        syncDirectory(directoryOf(path));
    } else if (errno != ENOENT) {
        failFile(path, errno);
    }
}

void syncDirectory(const std::filesystem::path &directory)
{
    const Descriptor file(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!file || fsync(file.get()) != 0) {
        failFile(directory, errno);
    }
}

} // namespace bmc

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Diagnostic lines on standard error or in the journal.
 *
 * A line is one write: "<4>libnetwork_mng:123 [10/0] text", level, source unit, source line, module
 * and category. A reader that has gone or does not read loses lines and disturbs nobody. */
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

#include "bmc_platform.h"
#include "common/state_directory.hpp"
#include "common/text.hpp"

namespace {

constexpr std::uint32_t defaultLevel = 4;
constexpr std::uint32_t lowestPriority = 7;
constexpr std::string_view cutMark = "...";

/* A pipe takes up to this many bytes as one piece. */
constexpr std::size_t lineSize = 4096;
constexpr std::size_t unitSize = 64;

/* Text of up to Size - 1 characters; what does not fit is cut and marked. */
template <std::size_t Size>
class BoundedText {
public:
    void append(const char *format, ...) __attribute__((format(printf, 2, 3)))
    {
        std::array<char, Size> text{};
        va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text.data(), text.size(), format, arguments);
        va_end(arguments);
        for (const char *character = text.data(); *character != '\0'; ++character) {
            add({character, 1});
        }
    }

    /* As one line: no newline at the end, a blank for one inside, other control characters and
     * whatever else may act on a terminal in hexadecimal. */
    void appendEscaped(std::string_view text)
    {
        while (text.ends_with('\n')) {
            text.remove_suffix(1);
        }
        for (const char character : text) {
            const char plain = character == '\n' ? ' ' : character;
            const auto escape = bmc::hexEscape(plain);
            add(bmc::isPrintable(plain) ? std::string_view(&plain, 1)
                                        : std::string_view(escape.data(), escape.size()));
        }
    }

    std::size_t length() const
    {
        return length_;
    }

    const char *terminated() const
    {
        return text_.data();
    }

    /* The text with a newline in the place of its terminator. */
    std::string_view finished()
    {
        text_[length_] = '\n';
        return {text_.data(), length_ + 1};
    }

private:
    static constexpr std::size_t capacity = Size - 1;

    /* A piece is never cut within. */
    void add(std::string_view piece)
    {
        if (isCut_) {
            return;
        }
        isCut_ = length_ + piece.size() > capacity;
        length_ = isCut_ ? beforeMark_ : length_;
        const std::string_view added = isCut_ ? cutMark : piece;
        std::copy(added.begin(), added.end(), text_.begin() + static_cast<std::ptrdiff_t>(length_));
        length_ += added.size();
        text_[length_] = '\0';
        beforeMark_ = length_ + cutMark.size() <= capacity ? length_ : beforeMark_;
    }

    std::array<char, Size> text_{};
    std::size_t length_ = 0;
    std::size_t beforeMark_ = 0; /* end of the last piece that leaves room for the mark */
    bool isCut_ = false;
};

struct Origin {
    std::uint32_t module;
    std::uint32_t category;
    std::uint32_t level;
    std::uint32_t line;
    BoundedText<unitSize> unit;
};

std::uint32_t highestLevel()
{
    const std::string_view text = bmc::environmentOr("BMC_LOG_LEVEL", "");
    std::uint32_t level = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), level);
    return error == std::errc{} && end == text.data() + text.size() ? level : defaultLevel;
}

/* Keeps SIGPIPE, which the end of a reader would bring, from this thread. One that was pending
 * before is blocked already and stays. */
class PipeSignalShield {
public:
    PipeSignalShield()
    {
        sigemptyset(&pipes_);
        sigaddset(&pipes_, SIGPIPE);
        sigset_t pending;
        sigpending(&pending);
        isNeeded_ = sigismember(&pending, SIGPIPE) == 0;
        if (isNeeded_) {
            pthread_sigmask(SIG_BLOCK, &pipes_, &before_);
        }
    }

    PipeSignalShield(const PipeSignalShield &) = delete;
    PipeSignalShield &operator=(const PipeSignalShield &) = delete;

    ~PipeSignalShield()
    {
        if (isNeeded_) {
            pthread_sigmask(SIG_SETMASK, &before_, nullptr);
        }
    }

    /* Takes back what a write has brought. */
    void absorb() const
    {
        const timespec now{};
        if (isNeeded_) {
            sigtimedwait(&pipes_, nullptr, &now);
        }
    }

private:
    sigset_t pipes_{};
    sigset_t before_{};
    bool isNeeded_ = false;
};

bool isRegularFile(int descriptor)
{
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

/* As write, but never waits for a reader. A file is only slow; a pipe or socket takes the bytes at
 * once or fails; of a device that cannot do that it is known beforehand whether it takes any. */
ssize_t writeAtOnce(int descriptor, std::string_view text)
{
    if (!isRegularFile(descriptor)) {
        const iovec part{const_cast<char *>(text.data()), text.size()};
        const ssize_t written = pwritev2(descriptor, &part, 1, -1, RWF_NOWAIT);
        if (written >= 0 || (errno != EOPNOTSUPP && errno != ENOSYS)) {
            return written;
        }
        pollfd room{descriptor, POLLOUT, 0};
        if (poll(&room, 1, 0) < 1) {
            errno = EAGAIN;
            return -1;
        }
    }
    return write(descriptor, text.data(), text.size());
}

bool writeToStderr(std::string_view text)
{
    const PipeSignalShield shield;
    while (!text.empty()) {
        const ssize_t written = writeAtOnce(STDERR_FILENO, text);
        if (written < 0 && errno == EPIPE) {
            shield.absorb();
        }
        if (written < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(written > 0 ? static_cast<std::size_t>(written) : 0);
    }
    return true;
}

/* Fields as the journal takes them: NAME=value, one on each line. */
bool writeToJournal(const Origin &origin, std::string_view text)
{
    BoundedText<lineSize> fields;
    fields.append("PRIORITY=%u\nSYSLOG_IDENTIFIER=%.64s\nCODE_FILE=%s\nCODE_LINE=%u\n"
                  "BMC_MODULE=%u\nBMC_CATEGORY=%u\nMESSAGE=",
                  std::min(origin.level, lowestPriority), program_invocation_short_name,
                  origin.unit.terminated(), origin.line, origin.module, origin.category);
    std::string_view head = fields.finished();
    head.remove_suffix(1);

    sockaddr_un address{AF_UNIX, "/run/systemd/journal/socket"};
    const std::array<iovec, 2> parts{iovec{const_cast<char *>(head.data()), head.size()},
                                     iovec{const_cast<char *>(text.data()), text.size()}};
    msghdr message{};
    message.msg_name = &address;
    message.msg_namelen = sizeof(address);
    message.msg_iov = const_cast<iovec *>(parts.data());
    message.msg_iovlen = parts.size();

    const int journal = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (journal < 0) {
        return false;
    }
    const bool sent = sendmsg(journal, &message, MSG_NOSIGNAL | MSG_DONTWAIT) >= 0;
    close(journal);
    return sent;
}

/* What the caller says, cut where no line could hold it. */
std::array<char, lineSize> formatted(const char *format, va_list arguments)
{
    std::array<char, lineSize> text{};
    if (std::vsnprintf(text.data(), text.size(), format, arguments) < 0) {
        std::snprintf(text.data(), text.size(), "(text cannot be formatted: %.64s)", format);
    }
    return text;
}

bool emit(const Origin &origin, const char *text)
{
    BoundedText<lineSize> line;
    line.append("<%u>%s:%u [%u/%u] ", std::min(origin.level, lowestPriority),
                origin.unit.terminated(), origin.line, origin.module, origin.category);
    const std::size_t prefix = line.length();
    line.appendEscaped(text);

    const std::string_view whole = line.finished();
    const std::string_view target = bmc::environmentOr("BMC_LOG_TARGET", "stderr");
    return (target == "journal" && writeToJournal(origin, whole.substr(prefix))) ||
           writeToStderr(whole);
}

} // namespace

/* 0 when the line was written or is filtered out, -1 when it could not be written. */
int BMC_DiagLogOut(uint32_t uiModule, uint32_t uiCategory, uint32_t uiLevel, uint32_t uiLine,
                   const char *pcFile, const char *pcFormat, ...)
{
    if (uiLevel > highestLevel()) {
        return 0;
    }

    const int callersError = errno;
    va_list arguments;
    va_start(arguments, pcFormat);
    const auto text = formatted(pcFormat != nullptr ? pcFormat : "(null)", arguments);
    va_end(arguments);

    Origin origin{uiModule, uiCategory, uiLevel, uiLine, {}};
    origin.unit.appendEscaped(pcFile != nullptr ? pcFile : "?");
    const bool written = emit(origin, text.data());

    errno = callersError;
    return written ? 0 : -1;
}

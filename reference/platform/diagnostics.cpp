// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Diagnostic lines on standard error or in the journal.
 *
 * A line is one write: "<4>libnetwork_mng:123 [10/0] text", level, source unit, source line, module
 * and category. */
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>

#include <sys/socket.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

#include "bmc_platform.h"
#include "common/state_directory.hpp"

namespace {

constexpr std::uint32_t defaultLevel = 4;
constexpr std::uint32_t lowestPriority = 7;
constexpr std::string_view cutMark = "...";

/* A pipe takes up to this many bytes as one piece. */
constexpr std::size_t lineSize = 4096;

struct Origin {
    std::uint32_t module;
    std::uint32_t category;
    std::uint32_t level;
    std::uint32_t line;
    const char *file;
};

/* A bounded line; what does not fit is cut and marked. */
class Line {
public:
    void append(const char *format, ...) __attribute__((format(printf, 2, 3)))
    {
        va_list arguments;
        va_start(arguments, format);
        appendList(format, arguments);
        va_end(arguments);
    }

    void appendList(const char *format, va_list arguments)
    {
        const std::size_t space = text_.size() - length_;
        const int length = std::vsnprintf(text_.data() + length_, space, format, arguments);
        if (length < 0) {
            append("(text cannot be formatted: %.64s)", format);
        } else if (static_cast<std::size_t>(length) < space) {
            length_ += static_cast<std::size_t>(length);
        } else {
            length_ = text_.size() - 1;
            std::copy(cutMark.begin(), cutMark.end(), text_.end() - 1 - cutMark.size());
        }
    }

    /* From here on the text is one line: no newline at its end and none inside. */
    void flatten(std::size_t from)
    {
        while (length_ > from && text_[length_ - 1] == '\n') {
            --length_;
        }
        std::replace(text_.begin() + static_cast<std::ptrdiff_t>(from),
                     text_.begin() + static_cast<std::ptrdiff_t>(length_), '\n', ' ');
    }

    std::size_t length() const
    {
        return length_;
    }

    /* The text with a newline in the place of its terminator. */
    std::string_view finished()
    {
        text_[length_] = '\n';
        return {text_.data(), length_ + 1};
    }

private:
    std::array<char, lineSize> text_{};
    std::size_t length_ = 0;
};

std::uint32_t highestLevel()
{
    const std::string_view text = bmc::environmentOr("BMC_LOG_LEVEL", "");
    std::uint32_t level = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), level);
    return error == std::errc{} && end == text.data() + text.size() ? level : defaultLevel;
}

bool writeToStderr(std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
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
    Line fields;
    fields.append("PRIORITY=%u\nSYSLOG_IDENTIFIER=%.64s\nCODE_FILE=%.64s\nCODE_LINE=%u\n"
                  "BMC_MODULE=%u\nBMC_CATEGORY=%u\nMESSAGE=",
                  std::min(origin.level, lowestPriority), program_invocation_short_name,
                  origin.file, origin.line, origin.module, origin.category);
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

bool emit(const Origin &origin, const char *format, va_list arguments)
{
    Line line;
    line.append("<%u>%.64s:%u [%u/%u] ", std::min(origin.level, lowestPriority), origin.file,
                origin.line, origin.module, origin.category);
    const std::size_t prefix = line.length();
    line.appendList(format, arguments);
    line.flatten(prefix);

    const std::string_view text = line.finished();
    const std::string_view target = bmc::environmentOr("BMC_LOG_TARGET", "stderr");
    return (target == "journal" && writeToJournal(origin, text.substr(prefix))) ||
           writeToStderr(text);
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
    const Origin origin{uiModule, uiCategory, uiLevel, uiLine, pcFile != nullptr ? pcFile : "?"};
    va_list arguments;
    va_start(arguments, pcFormat);
    const bool written = emit(origin, pcFormat != nullptr ? pcFormat : "(null)", arguments);
    va_end(arguments);

    errno = callersError;
    return written ? 0 : -1;
}

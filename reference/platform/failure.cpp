// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "platform/failure.hpp"

#include <cerrno>
#include <system_error>

#include "bmc_platform.h"

namespace bmc {

namespace {

void reportLine(Level level, std::uint32_t line, const char *text)
{
    BMC_DiagLogOut(0, 0, static_cast<std::uint32_t>(level), line, "libbmc_platform", "%s", text);
}

} // namespace

Failure::Failure(int code, const std::string &text, Level level, unsigned line)
    : std::runtime_error(text), code_(code != 0 ? code : EIO), level_(level), line_(line)
{
}

Failure::Failure(const Failure &failure, const std::string &text)
    : std::runtime_error(text), code_(failure.code_), level_(failure.level_), line_(failure.line_)
{
}

void Failure::report() const noexcept
{
    reportLine(level_, line_, what());
}

std::string errnoText(int error)
{
    return std::system_category().message(error);
}

int reportCurrentException() noexcept
{
    try {
        throw;
    } catch (const Failure &failure) {
        failure.report();
        return failure.code();
    } catch (const std::system_error &error) {
        const int code = error.code().value();
        const Level level = code == ENOENT ? Level::information : Level::error;
        reportLine(level, 0, error.what());
        return code != 0 ? code : EIO;
    } catch (const std::bad_alloc &) {
        reportLine(Level::error, 0, "out of memory");
        return ENOMEM;
    } catch (const std::exception &error) {
        reportLine(Level::error, 0, error.what());
        return EIO;
    } catch (...) {
        reportLine(Level::error, 0, "unknown failure");
        return EIO;
    }
}

void require(bool condition, const char *text, unsigned line)
{
    if (!condition) {
        throw Failure(EINVAL, text, Level::error, line);
    }
}

} // namespace bmc

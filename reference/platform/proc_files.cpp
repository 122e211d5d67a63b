// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Kernel interface files, kept beneath a directory of the platform's own. */
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "bmc_platform.h"
#include "common/files.hpp"
#include "common/state_directory.hpp"
#include "platform/failure.hpp"

namespace {

/* A kernel interface file holds a value, never more than this. */
constexpr std::uint32_t lengthLimit = 1U << 20;

constexpr mode_t everybodyReads = 0644;

/* The path appended to the directory, which it may not leave. */
std::filesystem::path stateFile(const char *path)
{
    const auto relative = std::filesystem::path(path).relative_path();
    const bool inside = std::find(relative.begin(), relative.end(), "..") == relative.end();
    bmc::require(inside && relative.has_filename(), "proc: the path names no file beneath");
    return bmc::stateDirectory() / "proc" / relative;
}

void requireArguments(const char *path, std::uint32_t length, const void *data)
{
    bmc::require(path != nullptr && data != nullptr, "proc: null argument");
    bmc::require(length != 0 && length <= lengthLimit, "proc: absurd length");
}

} // namespace

/* One byte is enough for success; what a shorter file leaves of pData is zeroed. */
int NW_ReadProc(const char *pcPath, uint32_t uiLength, void *pData)
{
    return bmc::guarded([&] {
        requireArguments(pcPath, uiLength, pData);

        const std::string bytes = bmc::readStart(stateFile(pcPath), uiLength);
        if (bytes.empty()) {
            throw bmc::Failure(ENODATA, std::string("proc: ") + pcPath + " is empty");
        }
        std::memset(pData, 0, uiLength);
        std::memcpy(pData, bytes.data(), bytes.size());
    });
}

/* Replaces the file; directories that are missing are made. */
int NW_WriteProc(const char *pcPath, uint32_t uiLength, const void *pData)
{
    return bmc::guarded([&] {
        requireArguments(pcPath, uiLength, pData);
        bmc::replaceFile(stateFile(pcPath), {static_cast<const char *>(pData), uiLength},
                         everybodyReads);
    });
}

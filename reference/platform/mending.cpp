// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "platform/mending.hpp"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <string>
#include <vector>

#include <lmdb.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/files.hpp"
#include "platform/failure.hpp"
#include "platform/record_store.hpp"

namespace bmc {

namespace {

constexpr int damageSignals[] = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr int damageCodes[] = {MDB_CORRUPTED, MDB_PAGE_NOTFOUND, MDB_INVALID,  MDB_VERSION_MISMATCH,
                               MDB_PANIC,     MDB_BAD_VALSIZE,   MDB_NOTFOUND, EIO};

/* Longer than any database takes; one whose writer stands still is no damaged one. */
constexpr unsigned patience = 10; /* seconds */

Condition conditionOf(const DatabasePaths &paths)
{
    try {
        const RecordStore store(paths.directory, paths.backup);
        store.prove();
        return store.copy().empty() ? Condition::empty : Condition::whole;
    } catch (const Failure &failure) {
        failure.report();
        return std::ranges::find(damageCodes, failure.code()) != std::end(damageCodes)
                   ? Condition::damaged
                   : Condition::unknown;
    } catch (...) {
        reportCurrentException();
        return Condition::unknown;
    }
}

/* What damage does to this process is expected: no handler, no core file, no orphan. */
[[noreturn]] void examineAndEnd(const DatabasePaths &paths, pid_t parent)
{
    const rlimit none{};
    setrlimit(RLIMIT_CORE, &none);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) {
        _exit(static_cast<int>(Condition::unknown));
    }
    for (const int number : damageSignals) {
        std::signal(number, SIG_DFL);
    }
    std::signal(SIGALRM, SIG_DFL);
    alarm(patience);
    _exit(static_cast<int>(conditionOf(paths)));
}

Condition conditionOfEnd(int status)
{
    if (WIFEXITED(status)) {
        return static_cast<Condition>(WEXITSTATUS(status));
    }
    const int number = WTERMSIG(status);
    const bool isDamage = std::ranges::find(damageSignals, number) != std::end(damageSignals);
    const Failure told(MDB_CORRUPTED, "database: reading it ends with signal " +
                                          std::to_string(number) +
                                          (isDamage ? ", so it is damaged" : ""));
    told.report();
    return isDamage ? Condition::damaged : Condition::unknown;
}

void removeAll(const std::filesystem::path &directory)
{
    std::error_code error;
    std::filesystem::remove_all(directory, error);
    if (error) {
        failFile(directory, error.value());
    }
}

void move(const std::filesystem::path &from, const std::filesystem::path &to)
{
    std::error_code error;
    std::filesystem::rename(from, to, error);
    if (error && error != std::errc::no_such_file_or_directory) {
        failFile(from, error.value());
    }
}

} // namespace

Condition examine(const DatabasePaths &paths)
{
    std::error_code ignored;
    if (!std::filesystem::exists(paths.directory / "data.mdb", ignored) && !ignored) {
        return Condition::empty;
    }
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child == 0) {
        examineAndEnd(paths, parent);
    }
    int status = 0;
    while (child > 0 && waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            return Condition::unknown;
        }
    }
    return child > 0 ? conditionOfEnd(status) : Condition::unknown;
}

void setAside(const DatabasePaths &paths)
{
    removeAll(paths.aside());
    move(paths.directory, paths.aside());
}

void rebuild(const DatabasePaths &paths, const Records &records, bool keepsOld)
{
    const std::filesystem::path draft = paths.directory.string() + ".new";
    removeAll(draft);
    std::vector<RecordWrite> writes;
    for (const auto &[key, content] : records) {
        writes.push_back({key, content});
    }
    RecordStore(draft, paths.backup).put(writes);

    if (keepsOld) {
        setAside(paths);
    } else {
        removeAll(paths.directory);
    }
    move(draft, paths.directory);
    syncDirectory(paths.directory.parent_path());
}

} // namespace bmc

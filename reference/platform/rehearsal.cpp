// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "platform/rehearsal.hpp"

#include <cerrno>
#include <map>
#include <string>

#include <sys/mman.h>

#include "common/descriptor.hpp"
#include "common/files.hpp"
#include "platform/backup.hpp"
#include "platform/lmdb_objects.hpp"

namespace bmc {

namespace {

/* The whole database, and room for its records twice. */
constexpr std::size_t rehearsalSize = 3 * databaseSize;

using Contents = std::map<std::string, std::string>;

std::string textOf(const MDB_val &value)
{
    return {static_cast<const char *>(value.mv_data), value.mv_size};
}

MDB_val valueOf(const std::string &text)
{
    return {text.size(), const_cast<char *>(text.data())};
}

Descriptor copyInMemory(const std::filesystem::path &file)
{
    const std::string bytes = readFile(file, databaseSize);
    Descriptor copy(memfd_create("rehearsal", MFD_CLOEXEC));
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t written = ::write(copy.get(), bytes.data() + done, bytes.size() - done);
        if (written <= 0) {
            failFile(file, errno);
        }
        done += static_cast<std::size_t>(written);
    }
    return copy;
}

/* An environment that is the whole of one open file. */
class Environment {
public:
    explicit Environment(const Descriptor &file)
    {
        constexpr unsigned flags = MDB_NOSUBDIR | MDB_NOLOCK | MDB_NOSYNC;
        const std::string path = "/proc/self/fd/" + std::to_string(file.get());
        check(mdb_env_create(&environment_), "rehearsal");
        try {
            check(mdb_env_set_mapsize(environment_, rehearsalSize), "rehearsal");
            check(mdb_env_open(environment_, path.c_str(), flags, 0), "rehearsal");
        } catch (...) {
            mdb_env_close(environment_);
            throw;
        }
    }

    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

    ~Environment()
    {
        mdb_env_close(environment_);
    }

    MDB_env *get() const
    {
        return environment_;
    }

private:
    MDB_env *environment_ = nullptr;
};

Contents contentsOf(const Transaction &transaction, MDB_dbi database)
{
    Cursor cursor(transaction, database);
    Contents contents;
    MDB_val name{};
    MDB_val record{};
    while (cursor.next(name, record)) {
        contents.emplace(textOf(name), textOf(record));
    }
    return contents;
}

/* Answers what was there before. */
Contents writeAnew(const Environment &environment)
{
    Transaction transaction(environment.get(), 0);
    MDB_dbi database = 0;
    check(mdb_dbi_open(transaction.get(), nullptr, 0, &database), "rehearsal");
    Contents contents = contentsOf(transaction, database);
    for (const auto &each : contents) {
        MDB_val name = valueOf(each.first);
        check(mdb_del(transaction.get(), database, &name, nullptr), "rehearsal");
    }
    for (const auto &[key, content] : contents) {
        MDB_val name = valueOf(key);
        MDB_val record = valueOf(content);
        check(mdb_put(transaction.get(), database, &name, &record, 0), "rehearsal");
    }
    transaction.commit();
    return contents;
}

} // namespace

void rehearse(const std::filesystem::path &file)
{
    const Descriptor copy = copyInMemory(file);
    const Environment environment(copy);
    const Contents contents = writeAnew(environment);
    if (writeAnew(environment) != contents) {
        throw Failure(MDB_CORRUPTED, "rehearsal: the records are not what was written");
    }
}

} // namespace bmc

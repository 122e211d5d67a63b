// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "queue_calls.hpp"

#include <cerrno>
#include <sys/ipc.h>
#include <sys/msg.h>

#include "libc_symbol.hpp"

namespace {

queue_calls::Script current;
std::vector<std::string> made;
fake::Bytes last;

template <typename Number>
Number answer(Number number)
{
    errno = current.error;
    return number;
}

} // namespace

namespace queue_calls {

void play(const Script &script)
{
    current = script;
    made.clear();
    last.clear();
}

const std::vector<std::string> &calls()
{
    return made;
}

const fake::Bytes &message()
{
    return last;
}

} // namespace queue_calls

/* The names are the linker's: --wrap sends each call here. */
extern "C" {

key_t __wrap_ftok(const char *path, int project);
int __wrap_msgget(key_t key, int flags);
int __wrap_msgctl(int queue, int command, msqid_ds *status) NW_WRAP_SYMBOL(msgctl);
int __wrap_msgsnd(int queue, const void *message, size_t length, int flags);
ssize_t __wrap_msgrcv(int queue, void *message, size_t length, long type, int flags);

key_t __wrap_ftok(const char *path, int project)
{
    made.push_back(fake::formatted("ftok(%s, %d)", path, project));
    return answer(current.key);
}

int __wrap_msgget(key_t key, int flags)
{
    made.push_back(fake::formatted("msgget(%x, %o)", key, flags));
    return answer((flags & IPC_CREAT) != 0 ? current.created : current.found);
}

int __wrap_msgctl(int queue, int command, msqid_ds *)
{
    made.push_back(fake::formatted("msgctl(%d, %d)", queue, command));
    return answer(current.controlled);
}

int __wrap_msgsnd(int queue, const void *message, size_t length, int flags)
{
    made.push_back(fake::formatted("msgsnd(%d, %zu, %o)", queue, length, flags));
    const auto *bytes = static_cast<const std::uint8_t *>(message);
    last.assign(bytes, bytes + sizeof(long) + length);
    return answer(current.sent);
}

ssize_t __wrap_msgrcv(int queue, void *, size_t length, long type, int flags)
{
    made.push_back(fake::formatted("msgrcv(%d, %zu, %ld, %o)", queue, length, type, flags));
    return answer(static_cast<ssize_t>(current.received));
}
}

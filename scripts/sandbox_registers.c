// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Preloaded for the sandbox's own kernel, which sets the registers of its processes with the size
// that it was built for. On processors with more (AMX) the machine's kernel takes nothing but all
// of them: what is missing is added as it stands.
#include <stdarg.h>
#include <string.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#define EXTENDED_STATE 0x202L // NT_X86_XSTATE

static long set_extended_state(long pid, const struct iovec *part)
{
    static unsigned char state[65536];
    struct iovec whole = {state, sizeof state};

    if (syscall(SYS_ptrace, PTRACE_GETREGSET, pid, EXTENDED_STATE, &whole) != 0) {
        return -1;
    }
    if (part->iov_len > whole.iov_len) {
        return syscall(SYS_ptrace, PTRACE_SETREGSET, pid, EXTENDED_STATE, part);
    }
    memcpy(state, part->iov_base, part->iov_len);
    return syscall(SYS_ptrace, PTRACE_SETREGSET, pid, EXTENDED_STATE, &whole);
}

// Stands before libc's.
long ptrace(enum __ptrace_request request, ...)
{
    va_list arguments;
    long pid, address, word, status;
    void *data;

    va_start(arguments, request);
    pid = va_arg(arguments, int);
    address = va_arg(arguments, long);
    data = va_arg(arguments, void *);
    va_end(arguments);

    if (request == PTRACE_SETREGSET && address == EXTENDED_STATE) {
        return set_extended_state(pid, data);
    }
    if (request < PTRACE_PEEKTEXT || request > PTRACE_PEEKUSER) {
        return syscall(SYS_ptrace, request, pid, address, data);
    }
    status = syscall(SYS_ptrace, request, pid, address, &word);
    return status < 0 ? status : word;
}

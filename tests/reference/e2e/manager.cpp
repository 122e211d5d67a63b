// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "manager.hpp"

#include <csignal>
#include <stdexcept>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "shell.hpp"

namespace e2e {

Manager::Manager(const std::vector<std::string> &command, std::uint32_t service) : command_(command)
{
    pid_ = ::fork();
    if (pid_ == 0) {
        becomeProgram();
    }
    const auto isReady = [this, service] {
        if (::waitpid(pid_, nullptr, WNOHANG) != 0) {
            pid_ = -1;
            throw std::runtime_error(command_[0] + " ended while it started");
        }
        return isOnTheBus(service);
    };
    if (!eventually(isReady)) {
        kill();
        throw std::runtime_error(command_[0] + " doesn't become ready");
    }
}

void Manager::becomeProgram() const
{
    std::vector<char *> arguments;
    for (const std::string &word : command_) {
        arguments.push_back(const_cast<char *>(word.c_str()));
    }
    arguments.push_back(nullptr);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::execv((NW_BINARY_DIR "/" + command_[0]).c_str(), arguments.data());
    ::_exit(127);
}

Manager::~Manager()
{
    kill();
}

int Manager::stop()
{
    sendSignal(SIGTERM);
    return wait();
}

void Manager::sendSignal(int signal) const
{
    ::kill(pid_, signal);
}

void Manager::kill()
{
    if (pid_ > 0) {
        sendSignal(SIGKILL);
        wait();
    }
}

int Manager::wait()
{
    int status = 0;
    ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

bool managerOwnsItsName()
{
    return isOnTheBus(NW_RPC_SERVICE_NETWORK);
}

bool isOnTheBus(std::uint32_t service)
{
    /* The name is claimed first; whoever answers is ready. */
    const CommandResult answer =
        run("dbus-send --system --print-reply --reply-timeout=2000 "
            "--dest=io.networkmng.Service" +
            std::to_string(service) + " /io/networkmng/Rpc org.freedesktop.DBus.Peer.Ping");
    return answer.status == 0;
}

} // namespace e2e

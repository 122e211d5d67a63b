#include "manager.hpp"

#include <csignal>
#include <stdexcept>

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "shell.hpp"

namespace e2e {

Manager::Manager()
{
    pid_ = ::fork();
    if (pid_ == 0) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::execl(NW_BINARY_DIR "/nwmanagerd", "nwmanagerd", nullptr);
        ::_exit(127);
    }
    const auto isReady = [this] {
        if (::waitpid(pid_, nullptr, WNOHANG) != 0) {
            pid_ = -1;
            throw std::runtime_error("the network manager ended while it started");
        }
        return managerOwnsItsName();
    };
    if (!eventually(isReady)) {
        kill();
        throw std::runtime_error("the network manager doesn't become ready");
    }
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
    const CommandResult answer =
        run("dbus-send --system --print-reply --dest=org.freedesktop.DBus / "
            "org.freedesktop.DBus.NameHasOwner string:io.networkmng.Service24");
    return answer.output.find("boolean true") != std::string::npos;
}

} // namespace e2e

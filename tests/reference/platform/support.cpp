// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bmc::test {

namespace {

constexpr unsigned childLifetime = 40; /* seconds */

int failuresSoFar()
{
    const auto *info = ::testing::UnitTest::GetInstance()->current_test_info();
    return info->result()->total_part_count();
}

} // namespace

TemporaryDirectory::TemporaryDirectory()
{
    std::string name = (std::filesystem::temp_directory_path() / "bmc-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary directory");
    }
    m_path = name;
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code error;
    std::filesystem::remove_all(m_path, error);
}

Environment::Environment(const char *name, const char *value)
    : m_name(name), m_wasSet(getenv(name) != nullptr)
{
    if (m_wasSet) {
        m_before = getenv(name);
    }
    value != nullptr ? setenv(name, value, 1) : unsetenv(name);
}

Environment::~Environment()
{
    m_wasSet ? setenv(m_name.c_str(), m_before.c_str(), 1) : unsetenv(m_name.c_str());
}

void StateTest::write(const std::filesystem::path &file, std::string_view text) const
{
    std::filesystem::create_directories((state() / file).parent_path());
    std::ofstream(state() / file) << text;
}

std::string stderrOf(const std::function<void()> &function)
{
    const int file = memfd_create("stderr", MFD_CLOEXEC);
    fcntl(file, F_SETFL, O_APPEND); /* a memory file's own position is not safe between threads */
    const int before = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 0);
    dup2(file, STDERR_FILENO);
    function();
    dup2(before, STDERR_FILENO);
    close(before);

    std::string text(static_cast<std::size_t>(lseek(file, 0, SEEK_END)), '\0');
    EXPECT_EQ(static_cast<ssize_t>(text.size()), pread(file, text.data(), text.size(), 0));
    close(file);
    return text;
}

Child::Child(const std::function<void()> &function) : m_pid(fork())
{
    if (m_pid == 0) {
        alarm(childLifetime);
        const int before = failuresSoFar();
        EXPECT_NO_THROW(function());
        std::fflush(nullptr);
        _exit(failuresSoFar() == before ? 0 : 1);
    }
}

Child::~Child()
{
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        wait();
    }
}

int Child::wait()
{
    int status = -1;
    while (waitpid(m_pid, &status, 0) < 0 && errno == EINTR) {
    }
    m_pid = -1;
    return status;
}

void inChild(const std::function<void()> &function)
{
    Child child(function);
    EXPECT_EQ(0, child.wait());
}

void eventually(const std::function<bool()> &condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_TRUE(condition());
}

} // namespace bmc::test

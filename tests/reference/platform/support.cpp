// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "support.hpp"

#include <cstdlib>
#include <fstream>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace bmc::test {

Environment::Environment(const char *name, const char *value)
    : name_(name), wasSet_(getenv(name) != nullptr)
{
    if (wasSet_) {
        before_ = getenv(name);
    }
    value != nullptr ? setenv(name, value, 1) : unsetenv(name);
}

Environment::~Environment()
{
    wasSet_ ? setenv(name_.c_str(), before_.c_str(), 1) : unsetenv(name_.c_str());
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

} // namespace bmc::test

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/files.hpp"

#include <atomic>
#include <csignal>
#include <fstream>
#include <set>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support.hpp"

namespace {

using bmc::test::Child;
using bmc::test::TemporaryDirectory;

/* Code of the system_error that the function throws, 0 when it throws none. */
template <typename Function>
int codeOf(Function &&function)
{
    try {
        function();
        return 0;
    } catch (const std::system_error &error) {
        return error.code().value();
    }
}

class Files : public ::testing::Test {
protected:
    const std::filesystem::path &directory() const
    {
        return directory_.path();
    }

    std::filesystem::path file() const
    {
        return directory() / "file";
    }

    std::set<std::string> names() const
    {
        std::set<std::string> names;
        for (const auto &entry : std::filesystem::directory_iterator(directory())) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    void write(const std::string &name, const std::string &text) const
    {
        std::ofstream(directory() / name) << text;
    }

private:
    TemporaryDirectory directory_;
};

class ReadFile : public Files {};

TEST_F(ReadFile, GivesAllOrTheStart)
{
    write("file", "0123456789");
    EXPECT_EQ("0123456789", bmc::readFile(file(), 10));
    EXPECT_EQ(EFBIG, codeOf([&] { bmc::readFile(file(), 9); }));
    EXPECT_EQ("0123", bmc::readStart(file(), 4));
    EXPECT_EQ("0123456789", bmc::readStart(file(), 100));

    write("file", std::string(100'000, 'x'));
    EXPECT_EQ(std::string(100'000, 'x'), bmc::readFile(file(), 100'000));
}

TEST_F(ReadFile, TellsAMissingFileApart)
{
    EXPECT_EQ(std::nullopt, bmc::findFile(file(), 10));
    EXPECT_EQ(ENOENT, codeOf([&] { bmc::readFile(file(), 10); }));
    write("file", "");
    EXPECT_EQ("", bmc::findFile(file(), 10));
    EXPECT_EQ(ENOTDIR, codeOf([&] { bmc::findFile(file() / "below", 10); }));
}

TEST_F(ReadFile, NeverWaitsForAPipe)
{
    ASSERT_EQ(0, mkfifo(file().c_str(), 0600));
    Child reader([this] {
        EXPECT_EQ(EINVAL, codeOf([&] { bmc::readFile(file(), 10); }));
        const int writer = open(file().c_str(), O_RDWR | O_CLOEXEC);
        EXPECT_EQ(EINVAL, codeOf([&] { bmc::findFile(file(), 10); }));
        close(writer);
    });
    EXPECT_EQ(0, reader.wait());
    EXPECT_EQ(EISDIR, codeOf([this] { bmc::readFile(directory(), 10); }));
}

class ReplaceFile : public Files {};

TEST_F(ReplaceFile, WritesTheBytesWithTheMode)
{
    const mode_t before = umask(077);
    bmc::replaceFile(file(), "one", 0644);
    umask(before);

    struct stat status {};
    ASSERT_EQ(0, stat(file().c_str(), &status));
    EXPECT_EQ(0644U, status.st_mode & 07777U);
    bmc::replaceFile(file(), "", 0600);
    EXPECT_EQ("", bmc::readFile(file(), 10));
    ASSERT_EQ(0, stat(file().c_str(), &status));
    EXPECT_EQ(0600U, status.st_mode & 07777U);
    EXPECT_EQ(std::set<std::string>{"file"}, names());
}

TEST_F(ReplaceFile, MakesMissingDirectories)
{
    bmc::replaceFile(directory() / "a/b/c", "x", 0644);
    EXPECT_EQ("x", bmc::readFile(directory() / "a/b/c", 10));
}

TEST_F(ReplaceFile, TakesARelativeName)
{
    Child child([this] {
        ASSERT_EQ(0, chdir(directory().c_str()));
        bmc::replaceFile("file", "x", 0644);
    });
    EXPECT_EQ(0, child.wait());
    EXPECT_EQ("x", bmc::readFile(file(), 10));
}

/* What may stand in the place of the file, or of the draft that the thread will make. */
class InTheWay : public ReplaceFile, public ::testing::WithParamInterface<const char *> {
protected:
    std::filesystem::path place() const
    {
        return std::string(GetParam()) == "file"
                   ? file()
                   : directory() / ("file." + std::to_string(gettid()) + ".new");
    }
};

TEST_P(InTheWay, PipeIsReplacedWithoutWaiting)
{
    Child child([this] {
        ASSERT_EQ(0, mkfifo(place().c_str(), 0600));
        bmc::replaceFile(file(), "x", 0644);
    });
    EXPECT_EQ(0, child.wait());
    EXPECT_EQ("x", bmc::readFile(file(), 10));
}

TEST_P(InTheWay, LinkIsReplacedAndNotFollowed)
{
    write("target", "old");
    ASSERT_EQ(0, symlink((directory() / "target").c_str(), place().c_str()));
    bmc::replaceFile(file(), "x", 0644);
    EXPECT_EQ("old", bmc::readFile(directory() / "target", 10));
    EXPECT_EQ("x", bmc::readFile(file(), 10));
    EXPECT_FALSE(std::filesystem::is_symlink(file()));
}

TEST_P(InTheWay, DirectoryIsAFailureThatLeavesNothing)
{
    std::filesystem::create_directories(place() / "below");
    EXPECT_NE(0, codeOf([this] { bmc::replaceFile(file(), "x", 0644); }));
    EXPECT_EQ(std::set<std::string>{place().filename().string()}, names());
}

INSTANTIATE_TEST_SUITE_P(Places, InTheWay, ::testing::Values("file", "draft"),
                         [](const auto &row) { return std::string(row.param); });

TEST_F(ReplaceFile, RemovesDraftsOfTheDeadAlone)
{
    pid_t dead = 0;
    {
        Child child([] {});
        dead = child.pid();
        child.wait();
    }
    const std::string ofDead = "file." + std::to_string(dead) + ".new";
    const std::set<std::string> kept{"file.1.new",
                                     "file.new",
                                     "file..new",
                                     "file.x.new",
                                     "other." + std::to_string(dead) + ".new",
                                     "file"};
    write(ofDead, "");
    for (const std::string &name : kept) {
        write(name, "");
    }
    bmc::replaceFile(file(), "x", 0644);
    EXPECT_EQ(kept, names());
}

TEST_F(ReplaceFile, ShowsReadersOneOrTheOther)
{
    constexpr std::size_t size = 50'000;
    bmc::replaceFile(file(), std::string(size, 'a'), 0644);
    std::atomic<bool> isDone = false;
    std::vector<std::jthread> writers;
    for (const char letter : {'a', 'b', 'c'}) {
        writers.emplace_back([this, letter, &isDone] {
            while (!isDone) {
                EXPECT_NO_THROW(bmc::replaceFile(file(), std::string(size, letter), 0644));
            }
        });
    }
    for (int round = 0; round < 200; ++round) {
        const std::string text = bmc::readFile(file(), size);
        ASSERT_EQ(std::string(size, text[0]), text);
    }
    isDone = true;
    writers.clear();
    EXPECT_EQ(std::set<std::string>{"file"}, names());
}

TEST_F(ReplaceFile, KilledWriterLeavesOneOrTheOtherAndNothingLasting)
{
    bmc::replaceFile(file(), std::string(9000, 'a'), 0644);
    for (int round = 0; round < 20; ++round) {
        Child writer([this] {
            for (char letter = 'a';; letter = letter == 'z' ? 'a' : static_cast<char>(letter + 1)) {
                bmc::replaceFile(file(), std::string(9000, letter), 0644);
            }
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
        writer.signal(SIGKILL);
        writer.wait();
        const std::string text = bmc::readFile(file(), 9000);
        EXPECT_EQ(std::string(9000, text[0]), text);
    }
    bmc::replaceFile(file(), "x", 0644);
    EXPECT_EQ(std::set<std::string>{"file"}, names());
}

TEST_F(Files, AreRemovedOnce)
{
    write("file", "x");
    bmc::removeFile(file());
    EXPECT_EQ(std::set<std::string>{}, names());
    EXPECT_NO_THROW(bmc::removeFile(file()));
    EXPECT_NE(0, codeOf([this] { bmc::removeFile(directory()); }));
}

} // namespace

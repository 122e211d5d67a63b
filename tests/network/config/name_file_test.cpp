// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// The BMC name file: contents, mode bit, failures. Files of a temporary directory stand in for the
// one that the reader opens.
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "fake_matchers.hpp"
#include "files.hpp"
#include "guarded.hpp"
#include "libc_symbol.hpp"
#include "log_text.hpp"
#include "network_mng/discovery.h"

namespace {

// Which calls fail, how files are opened and closed.
struct Files {
    std::string name; // of the file that is read
    bool closeFails = false;
    bool statFails = false;

    std::vector<std::string> opened;
    int closed = 0;
    int inherited = 0; // of those closed: a program started meanwhile would have had them
    int modesChanged = 0;
};
Files files;

void noteClosing(int descriptor)
{
    ++files.closed;
    if ((fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0) {
        ++files.inherited;
    }
}

} // namespace

extern "C" {
FILE *__real_fopen(const char *path, const char *mode) NW_REAL_SYMBOL(fopen);
FILE *__wrap_fopen(const char *path, const char *mode) NW_WRAP_SYMBOL(fopen);
int __real_fclose(FILE *file);
int __wrap_fclose(FILE *file);
int __real_close(int descriptor);
int __wrap_close(int descriptor);
int __real_fstat(int descriptor, struct stat *status) NW_REAL_SYMBOL(fstat);
int __wrap_fstat(int descriptor, struct stat *status) NW_WRAP_SYMBOL(fstat);
int __real_fchmod(int descriptor, mode_t mode);
int __wrap_fchmod(int descriptor, mode_t mode);

FILE *__wrap_fopen(const char *path, const char *mode)
{
    files.opened.push_back(std::string(path) + " " + mode[0]);
    return __real_fopen(
        std::strcmp(path, "/conf/network/hostname") == 0 ? files.name.c_str() : path, mode);
}

int __wrap_fclose(FILE *file)
{
    noteClosing(fileno(file));
    const int result = __real_fclose(file);
    errno = EIO;
    return files.closeFails ? EOF : result;
}

int __wrap_close(int descriptor)
{
    noteClosing(descriptor);
    const int result = __real_close(descriptor);
    if (files.closeFails) {
        errno = EIO;
    }
    return files.closeFails ? -1 : result;
}

int __wrap_fstat(int descriptor, struct stat *status)
{
    if (files.statFails) {
        errno = EIO;
        return -1;
    }
    return __real_fstat(descriptor, status);
}

int __wrap_fchmod(int descriptor, mode_t mode)
{
    ++files.modesChanged;
    return __real_fchmod(descriptor, mode);
}
}

namespace {

using support::errorLine;
using support::Guarded;
using support::Lines;

constexpr const char *reader = "LIB_NW_ReadBmcNameFromFile";
constexpr const char *writer = "NW_WriteBmcNameToFile";

class NameFile : public fake::FakePlatformTest {
protected:
    NameFile()
    {
        files = Files{};
        files.name = path("hostname");
    }
    ~NameFile() override
    {
        files.closeFails = false;
        EXPECT_EQ(support::lowestFreeDescriptor(), free_) << "a file was left open";
    }

    std::string path(const std::string &name) const
    {
        return (directory_ / name).string();
    }
    // Lines behind which one says that the closing failed; it names the function and its own line.
    static void expectLines(Lines expected, const std::string &function)
    {
        const auto &last = fake::platform().lines().back();
        expected.push_back(support::debugLine("[" + function + "-" + std::to_string(last.line) +
                                              "L] Close file failed, " + std::strerror(EIO) + "."));
        EXPECT_EQ(support::loggedLines(), expected);
        EXPECT_EQ(last.format, "[%s-%dL] Close file failed, %s.");
    }

private:
    const support::TemporaryDirectory directory_;
    const int free_ = support::lowestFreeDescriptor();
};

/* ---- Reading ---- */

constexpr std::size_t nameSize = 64;

struct Content {
    std::string name;
    std::string content;
    std::string expected;
};
class NameRead : public NameFile, public ::testing::WithParamInterface<Content> {};

TEST_P(NameRead, IsTheFirstLine)
{
    support::writeFile(files.name, GetParam().content);
    const Guarded text(nameSize, 0xEE);
    EXPECT_EQ(LIB_NW_ReadBmcNameFromFile(static_cast<char *>(static_cast<void *>(text.data()))),
              0U);
    EXPECT_STREQ(static_cast<char *>(static_cast<void *>(text.data())),
                 GetParam().expected.c_str());
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(files.opened, std::vector<std::string>{"/conf/network/hostname r"});
    EXPECT_EQ(files.closed, 1);
    EXPECT_EQ(files.inherited, 0);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, NameRead, ::testing::Values(
    Content{"NewlineStays",   "bmc-1\n", "bmc-1\n"},
    Content{"WithoutNewline", "bmc-1", "bmc-1"},
    Content{"FirstOfTwo",     "bmc-1\nbmc-2\n", "bmc-1\n"},
    Content{"EmptyLine",      "\nbmc-2\n", "\n"},
    Content{"Of62",           std::string(62, 'n') + "\n", std::string(62, 'n') + "\n"},
    Content{"Of63",           std::string(63, 'n') + "\n", std::string(63, 'n')},
    Content{"Of64",           std::string(64, 'n'), std::string(63, 'n')},
    Content{"Of1000",         std::string(1000, 'n') + "\n", std::string(63, 'n')}), fake::RowName{});
/* clang-format on */

class NameReadFailure : public NameFile {
protected:
    std::uint32_t read()
    {
        char text[nameSize] = "before";
        return LIB_NW_ReadBmcNameFromFile(text);
    }
};

TEST_F(NameReadFailure, MissingFile)
{
    EXPECT_EQ(read(), 0x81000001U);
    EXPECT_EQ(support::loggedLines(),
              Lines{errorLine("Reading hostname failed when open hostnamefile")});
    EXPECT_EQ(files.closed, 0);
}

TEST_F(NameReadFailure, EmptyFileAndDirectory)
{
    support::writeFile(files.name, "");
    EXPECT_EQ(read(), 0x81000001U);
    files.name = path(".");
    EXPECT_EQ(read(), 0x81000001U);
    const std::string line = errorLine("Reading hostname failed when get hostname");
    EXPECT_EQ(support::loggedLines(), (Lines{line, line}));
    EXPECT_EQ(files.closed, 2);
}

TEST_F(NameReadFailure, EmptyFileThatCannotBeClosed)
{
    support::writeFile(files.name, "");
    files.closeFails = true;
    EXPECT_EQ(read(), 0x81000001U);
    expectLines({errorLine("Reading hostname failed when get hostname")}, reader);
}

TEST_F(NameReadFailure, FileThatCannotBeClosedIsStillRead)
{
    support::writeFile(files.name, "bmc\n");
    files.closeFails = true;
    char text[nameSize] = "before";
    EXPECT_EQ(LIB_NW_ReadBmcNameFromFile(text), 0U);
    EXPECT_STREQ(text, "bmc\n");
    expectLines({}, reader);
}

TEST_F(NameReadFailure, Null)
{
    EXPECT_EQ(LIB_NW_ReadBmcNameFromFile(nullptr), 0x81000002U);
    EXPECT_THAT(lines(), ::testing::ElementsAre(fake::isNullLine("pcHostName", reader)));
    EXPECT_TRUE(files.opened.empty());
}

/* ---- Writing ---- */

struct Overwrite {
    std::string name;
    std::string before;
    std::string written;
    std::string behind;
};
class NameWrite : public NameFile, public ::testing::WithParamInterface<Overwrite> {};

TEST_P(NameWrite, OverwritesFromTheStart)
{
    const Overwrite &row = GetParam();
    support::writeFile(path("name"), row.before);
    const Guarded bytes(
        std::span(static_cast<const std::uint8_t *>(static_cast<const void *>(row.written.data())),
                  row.written.size()));
    EXPECT_EQ(NW_WriteBmcNameToFile(static_cast<char *>(static_cast<void *>(bytes.data())),
                                    static_cast<std::uint32_t>(row.written.size()),
                                    path("name").c_str()),
              0U);
    EXPECT_EQ(support::readFile(path("name")), row.behind);
    EXPECT_TRUE(lines().empty());
    EXPECT_EQ(files.closed, 1);
    EXPECT_EQ(files.inherited, 0);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, NameWrite, ::testing::Values(
    Overwrite{"TailStays",   "abcdef", "xy", "xycdef"},
    Overwrite{"SameLength",  "abc", "xyz", "xyz"},
    Overwrite{"Longer",      "abc", "uvwxyz\n", "uvwxyz\n"},
    Overwrite{"IntoEmpty",   "", "xyz", "xyz"},
    Overwrite{"Nothing",     "abc", "", "abc"},
    Overwrite{"ZeroBytes",   "abcdef", std::string("x\0y", 3), std::string("x\0ydef", 6)},
    Overwrite{"Large",       "abc", std::string(100000, 'x'), std::string(100000, 'x')}), fake::RowName{});
/* clang-format on */

struct Mode {
    std::string name;
    mode_t before;
    mode_t behind;
    int changes;
};
class NameMode : public NameFile, public ::testing::WithParamInterface<Mode> {};

TEST_P(NameMode, GainsTheReadBitForOthers)
{
    support::writeFile(path("name"), "abc");
    ASSERT_EQ(chmod(path("name").c_str(), GetParam().before), 0);
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, path("name").c_str()), 0U);
    struct stat status {};
    ASSERT_EQ(stat(path("name").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, GetParam().behind);
    EXPECT_EQ(files.modesChanged, GetParam().changes);
}

/* clang-format off */
INSTANTIATE_TEST_SUITE_P(Rows, NameMode, ::testing::Values(
    Mode{"Owner",        0600, 0604, 1},
    Mode{"OwnerAndGroup", 0640, 0644, 1},
    Mode{"Executable",   0751, 0755, 1},
    Mode{"Sticky",       01600, 01604, 1},
    Mode{"OthersRead",   0644, 0644, 0},
    Mode{"OthersReadAlone", 0604, 0604, 0}), fake::RowName{});
/* clang-format on */

class NameWriteFailure : public NameFile {};

TEST_F(NameWriteFailure, MissingFileIsNotMade)
{
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, path("none").c_str()), 0x81000001U);
    EXPECT_FALSE(std::filesystem::exists(path("none")));
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, path(".").c_str()), 0x81000001U);
    EXPECT_EQ(support::loggedLines(),
              (Lines{errorLine("file make error."), errorLine("file make error.")}));
    EXPECT_EQ(files.closed, 0);
}

TEST_F(NameWriteFailure, NoStatus)
{
    support::writeFile(path("name"), "abc");
    files.statFails = true;
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, path("name").c_str()), 0x81000001U);
    EXPECT_EQ(support::loggedLines(), Lines{errorLine("file stat get fail.")});
    EXPECT_EQ(support::readFile(path("name")), "abc");
    EXPECT_EQ(files.closed, 1);
}

TEST_F(NameWriteFailure, NoStatusAndNoClose)
{
    support::writeFile(path("name"), "abc");
    files.statFails = files.closeFails = true;
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, path("name").c_str()), 0x81000001U);
    expectLines({errorLine("file stat get fail.")}, writer);
}

TEST_F(NameWriteFailure, FullDevice)
{
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, "/dev/full"), 0x81000001U);
    EXPECT_EQ(support::loggedLines(), Lines{errorLine("file write fail")});
    EXPECT_EQ(files.closed, 1);
    EXPECT_EQ(files.modesChanged, 0);
}

// The mode comes before the bytes; a part of them is a failure.
TEST_F(NameWriteFailure, ShortWrite)
{
    support::writeFile(path("name"), "abc");
    ASSERT_EQ(chmod(path("name").c_str(), 0600), 0);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit five{5, before.rlim_max};
    std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &five), 0);
    const std::uint32_t result = NW_WriteBmcNameToFile("uvwxyz", 6, path("name").c_str());
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);

    EXPECT_EQ(result, 0x81000001U);
    EXPECT_EQ(support::loggedLines(), Lines{errorLine("file write fail")});
    EXPECT_EQ(support::readFile(path("name")), "uvwxy");
    EXPECT_EQ(files.modesChanged, 1);
    EXPECT_EQ(files.closed, 1);
}

TEST_F(NameWriteFailure, FullDeviceThatCannotBeClosed)
{
    files.closeFails = true;
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, "/dev/full"), 0x81000001U);
    expectLines({errorLine("file write fail")}, writer);
}

TEST_F(NameWriteFailure, FileThatCannotBeClosedIsStillWritten)
{
    support::writeFile(path("name"), "abc");
    files.closeFails = true;
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, path("name").c_str()), 0U);
    expectLines({}, writer);
    EXPECT_EQ(support::readFile(path("name")), "xbc");
}

TEST_F(NameWriteFailure, Nulls)
{
    EXPECT_EQ(NW_WriteBmcNameToFile(nullptr, 1, "/dev/full"), 0x81000002U);
    EXPECT_EQ(NW_WriteBmcNameToFile("x", 1, nullptr), 0x81000002U);
    EXPECT_EQ(NW_WriteBmcNameToFile(nullptr, 0, nullptr), 0x81000002U);
    EXPECT_THAT(lines(), ::testing::ElementsAre(fake::isNullLine("pcWriteBuf", writer),
                                                fake::isNullLine("pcFileName", writer),
                                                fake::isNullLine("pcWriteBuf", writer)));
    EXPECT_EQ(files.closed, 0);
}

} // namespace

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/descriptor.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>

namespace {

using bmc::Descriptor;

bool isOpen(int fd)
{
    return fcntl(fd, F_GETFD) >= 0;
}

int opened()
{
    return open("/dev/null", O_RDONLY | O_CLOEXEC);
}

TEST(Descriptor, ClosesWhatItOwns)
{
    const int fd = opened();
    {
        const Descriptor file(fd);
        EXPECT_TRUE(file);
        EXPECT_EQ(fd, file.get());
    }
    EXPECT_FALSE(isOpen(fd));
    EXPECT_FALSE(Descriptor());
}

TEST(Descriptor, HandsOverWhenItIsMoved)
{
    const int fd = opened();
    Descriptor first(fd);
    Descriptor second(std::move(first));
    EXPECT_TRUE(isOpen(fd));

    const int other = opened();
    Descriptor third(other);
    third = std::move(second);
    EXPECT_FALSE(isOpen(other));
    EXPECT_EQ(fd, third.get());
    third = Descriptor();
    EXPECT_FALSE(isOpen(fd));
}

} // namespace

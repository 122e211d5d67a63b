// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* A file and the kernel's queue that is named by it. */
#ifndef REAL_QUEUE_HPP
#define REAL_QUEUE_HPP

#include <sys/msg.h>

#include "child.hpp"
#include "fake_matchers.hpp"

namespace ipc {

/* What the kernel holds, message type and text, taken and put without the library. */
struct Message {
    long type = 0;
    fake::Bytes text;

    bool operator==(const Message &) const = default;
};

/* The queue of a file. Neither the file nor the queue need exist. */
class RealQueue {
public:
    RealQueue(std::string path, int project) : path_(std::move(path)), project_(project) {}

    const char *path() const
    {
        return path_.c_str();
    }
    int project() const
    {
        return project_;
    }
    int key() const;

    int id() const; /* -1 when there is none */
    bool exists() const
    {
        return id() >= 0;
    }
    std::size_t count() const; /* messages waiting; 0 when there is no queue */
    std::size_t room() const;  /* bytes that all texts together may have */
    unsigned mode() const;

    void create(unsigned mode) const;
    void remove() const;
    bool put(const Message &message) const; /* false when there is no room */
    Message take() const;                   /* waits for none */

private:
    std::string path_;
    int project_;
};

/* A queue under a new file; both are gone afterwards. */
class RealQueueTest : public fake::FakePlatformTest {
protected:
    RealQueueTest();
    ~RealQueueTest() override;

    RealQueue queue;

    static constexpr int project = 7;
};

/* Waits until the queue holds this many messages. */
bool reaches(const RealQueue &queue, std::size_t count);

} // namespace ipc

#endif

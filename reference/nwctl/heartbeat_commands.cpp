// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "common/hex.hpp"
#include "network_mng/message.h"
#include "nwctl/command.hpp"
#include "nwctl/guards.hpp"
#include "nwctl/queue_message.hpp"

namespace nwctl {

namespace {

/* The library prints why it failed; standard output is the answer's. */
struct Posted {
    NW_RESULT result;
    bool isSupported;
    bool isLimitOver;
    std::string printed;
};

Posted post(const std::vector<std::uint8_t> &payload, int id, unsigned seconds)
{
    const OutputCapture capture;
    const TimeLimit limit(seconds);
    Posted posted{HeartbeatPostLogMsg(payload.data(), id), false, limit.isOver(), ""};
    posted.printed = capture.text();

    std::uint8_t support = 0;
    posted.isSupported = NW_CheckKezCapability(&support) != NW_OK || support == 1;
    return posted;
}

void requireDone(const Posted &posted)
{
    if (posted.result == NW_OK) {
        return;
    }
    if (!posted.isSupported) {
        throw Failure(Exit::refused, "", "", "the platform has no heartbeat: " + posted.printed,
                      posted.result);
    }
    if (posted.isLimitOver) {
        throw Failure(Exit::transport, "", "", "the time limit is over", posted.result);
    }
    throw Failure(Exit::internal, "", "", posted.printed, posted.result);
}

void sendHeartbeat(const Arguments &arguments, Session &session)
{
    const auto id = queueId(arguments.value("ID"));
    const auto payload = bytesIn("BYTES", arguments.value("BYTES"), NW_HEARTBEAT_PAYLOAD_SIZE);

    requireDone(post(payload, id, limitIn(arguments)));
    session.answer(
        {line("heartbeat sent"), hidden("id", id), hidden("bytes", bmc::hexText(payload))});
}

} // namespace

void addHeartbeatCommands(std::vector<Command> &commands)
{
    using Kind = Parameter::Kind;
    commands.push_back({"heartbeat",
                        "send",
                        "Post a message to the queue of " NW_HEARTBEAT_KEY_FILE,
                        "heartbeat send 1 0102030405060708",
                        {{Kind::required, "ID", "project id of the heartbeat queue, 1 to 255"},
                         {Kind::required, "BYTES", "8 bytes, two hexadecimal digits each"},
                         limitParameter()},
                        sendHeartbeat});
}

} // namespace nwctl

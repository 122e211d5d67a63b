// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <cerrno>
#include <system_error>

#include <sys/ipc.h>
#include <sys/msg.h>

#include "common/hex.hpp"
#include "nwctl/command.hpp"
#include "nwctl/guards.hpp"
#include "nwctl/queue_message.hpp"

namespace nwctl {

namespace {

constexpr unsigned typeMax = 0x7FFFFFFF;

struct QueueName {
    std::string path;
    std::string idText;

    int id() const
    {
        return queueId(idText);
    }
};

QueueName queueIn(const Arguments &arguments)
{
    return {arguments.value("PATH"), arguments.value("ID")};
}

/* errno in words. */
std::string systemReason()
{
    return std::generic_category().message(errno);
}

/* The library doesn't say why a call failed: what the user can mend is looked up behind it. */
Failure whyFailed(const QueueName &queue, NW_RESULT result)
{
    const auto refused = [&](const char *option, const std::string &value,
                             const std::string &reason) {
        return Failure(Exit::refused, option, value, reason, result);
    };

    errno = 0;
    const key_t key = ftok(queue.path.c_str(), queue.id());
    if (key == -1 && errno != 0) {
        return refused("PATH", queue.path, systemReason());
    }
    if (key < 0) {
        return refused("ID", queue.idText, "the key is negative; take an id below 128");
    }
    if (msgget(key, 0) < 0) {
        return refused("PATH", queue.path,
                       errno == ENOENT ? "there is no such queue" : systemReason());
    }
    return {Exit::internal, "PATH", queue.path, "the queue failed or was replaced meanwhile",
            result};
}

void requireDone(NW_RESULT result, const QueueName &queue, bool isLimitOver = false)
{
    if (result == NW_OK) {
        return;
    }
    if (isLimitOver) {
        throw Failure(Exit::transport, "PATH", queue.path, "the time limit is over", result);
    }
    throw whyFailed(queue, result);
}

void create(const Arguments &arguments, Session &session)
{
    const QueueName queue = queueIn(arguments);
    requireDone(NM_CreateMsg(queue.path.c_str(), queue.id()), queue);
    session.answer({line("queue created"), hidden("path", queue.path), hidden("id", queue.id())});
}

MessageBytes messageText(const Arguments &arguments)
{
    const std::string text = arguments.value("TEXT");
    const std::vector<std::string> records = arguments.values("--tlv");
    if (arguments.has("TEXT") != records.empty()) {
        throw Failure(Exit::usage, "TEXT", text, "give either a text or --tlv");
    }
    if (!records.empty()) {
        return packTlv("--tlv", records);
    }
    if (text.size() > NW_MSG_TEXT_SIZE) {
        throw Failure(Exit::usage, "TEXT", text,
                      "longer than " + std::to_string(NW_MSG_TEXT_SIZE) + " bytes");
    }
    return {text.begin(), text.end()};
}

void sendToQueue(const Arguments &arguments, Session &session)
{
    const QueueName queue = queueIn(arguments);
    const MessageBytes text = messageText(arguments);
    NW_MSG_PACKAGE_S package{};
    package.lMsgType =
        static_cast<long>(numberIn("--type", arguments.value("--type", "1"), 1, typeMax));
    std::copy(text.begin(), text.end(), package.aucText);

    const TimeLimit limit(limitIn(arguments));
    const NW_RESULT result = NW_SendMsg(queue.path.c_str(), queue.id(),
                                        static_cast<std::uint32_t>(text.size()), &package);
    requireDone(result, queue, limit.isOver());
    session.answer({line("message sent"), hidden("type", long{package.lMsgType}),
                    hidden("bytes", bmc::hexText(text))});
}

List recordsOf(const std::vector<TlvRecord> &records)
{
    List list;
    for (const TlvRecord &record : records) {
        const std::string value = bmc::hexText(record.value);
        list.rows.push_back({.value = Object{{hidden("type", record.type), hidden("value", value)}},
                             .text = "record " + std::to_string(record.type) + ": " + value});
    }
    return list;
}

/* The message is taken from the queue whatever it holds, so nothing of it is withheld. */
void printMessage(const NW_MSG_PACKAGE_S &package, bool wantsRecords, Session &session)
{
    const auto bytes = bmc::withoutZeroTail(package.aucText);
    const std::string text(bytes.begin(), bytes.end());
    const auto records = wantsRecords ? unpackTlv(package.aucText) : std::nullopt;
    if (wantsRecords && !records) {
        throw Failure(Exit::refused, "--tlv", bmc::hexText(bytes), "the message holds no records");
    }

    session.answer({{.key = "type",
                     .value = long{package.lMsgType},
                     .text = "type " + std::to_string(package.lMsgType)},
                    {.key = "text", .value = text, .text = records ? "" : "text " + text},
                    hidden("bytes", bmc::hexText(bytes)),
                    {.key = "records", .value = records ? Value(recordsOf(*records)) : Value()}});
}

void receive(const Arguments &arguments, Session &session)
{
    const QueueName queue = queueIn(arguments);
    NW_MSG_PACKAGE_S package{};
    {
        const TimeLimit limit(limitIn(arguments));
        const NW_RESULT result =
            NW_ReceiveMsg(queue.path.c_str(), queue.id(), NW_MSG_TEXT_SIZE, &package);
        requireDone(result, queue, limit.isOver());
    }
    printMessage(package, arguments.has("--tlv"), session);
}

} // namespace

void addQueueCommands(std::vector<Command> &commands)
{
    using Kind = Parameter::Kind;
    const Parameter path{Kind::required, "PATH", "existing file that names the queue"};
    const Parameter id{Kind::required, "ID", "project id, 1 to 255"};
    const Parameter text{Kind::optional, "TEXT", "text of at most 255 bytes"};
    const Parameter record{Kind::repeated, "--tlv", "record instead of a text; may be repeated",
                           "TYPE:HEX"};
    const Parameter type{Kind::option, "--type", "message type, 1 or more", "N"};
    const Parameter limit = limitParameter();
    /* clang-format off */
    commands.insert(commands.end(), {
        {"queue", "create",  "Make an empty queue; an earlier one goes with its messages", "queue create /etc/hostname 7",              {path, id},                             create},
        {"queue", "send",    "Send a message; waits while the queue is full",              "queue send /etc/hostname 7 --type 2 hello", {path, id, text, record, type, limit},  sendToQueue},
        {"queue", "receive", "Take the first message; waits until there is one",           "queue receive /etc/hostname 7 --timeout 5", {path, id, flag("--tlv", "show the message's records"), limit}, receive},
    });
    /* clang-format on */
}

} // namespace nwctl

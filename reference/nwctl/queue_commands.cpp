// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstring>

#include <sys/ipc.h>
#include <sys/msg.h>

#include "answer.hpp"
#include "commands.hpp"
#include "common/hex.hpp"
#include "exchange_values.hpp"
#include "queue_message.hpp"
#include "text.hpp"
#include "time_limit.hpp"

namespace nwctl {

namespace {

constexpr unsigned idMax = 255; /* the key has eight bits for it */
constexpr unsigned typeMax = 0x7FFFFFFF;

struct QueueName {
    std::string path;
    std::string idText;

    int id() const
    {
        return static_cast<int>(numberIn("ID", idText, 1, idMax));
    }
};

struct SendArguments {
    QueueName queue;
    std::string type = "1";
    std::string text;
    std::vector<std::string> records;
    std::string limit = "0";
};

struct ReceiveArguments {
    QueueName queue;
    bool wantsRecords = false;
    std::string limit = "0";
};

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
        return refused("PATH", queue.path, std::strerror(errno));
    }
    if (key < 0) {
        return refused("ID", queue.idText, "the key is negative; take an id below 128");
    }
    if (msgget(key, 0) < 0) {
        return refused("PATH", queue.path,
                       errno == ENOENT ? "there is no such queue" : std::strerror(errno));
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

void create(const QueueName &queue, Session &session)
{
    requireDone(NM_CreateMsg(queue.path.c_str(), queue.id()), queue);
    answer(session, Json{{"path", queue.path}, {"id", queue.id()}}, "queue created\n");
}

MessageBytes messageText(const SendArguments &arguments)
{
    if (!arguments.records.empty()) {
        return packTlv("--tlv", arguments.records);
    }
    if (arguments.text.size() > NW_MSG_TEXT_SIZE) {
        throw Failure(Exit::usage, "TEXT", arguments.text,
                      "longer than " + std::to_string(NW_MSG_TEXT_SIZE) + " bytes");
    }
    return {arguments.text.begin(), arguments.text.end()};
}

void send(const SendArguments &arguments, Session &session)
{
    const MessageBytes text = messageText(arguments);
    NW_MSG_PACKAGE_S package{};
    package.lMsgType = static_cast<long>(numberIn("--type", arguments.type, 1, typeMax));
    std::copy(text.begin(), text.end(), package.aucText);
    const QueueName &queue = arguments.queue;

    const TimeLimit limit(limitIn(arguments.limit));
    const NW_RESULT result = NW_SendMsg(queue.path.c_str(), queue.id(),
                                        static_cast<std::uint32_t>(text.size()), &package);
    requireDone(result, queue, limit.isOver());
    answer(session, Json{{"type", long{package.lMsgType}}, {"bytes", bmc::hexText(text)}},
           "message sent\n");
}

Json recordsJson(const std::vector<TlvRecord> &records)
{
    Json rows = Json::array();
    for (const TlvRecord &record : records) {
        rows.push_back({{"type", record.type}, {"value", bmc::hexText(record.value)}});
    }
    return rows;
}

std::string recordsText(const std::vector<TlvRecord> &records)
{
    std::string rows;
    for (const TlvRecord &record : records) {
        rows += "record " + std::to_string(record.type) + ": " + bmc::hexText(record.value) + "\n";
    }
    return rows;
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

    answer(session,
           Json{{"type", long{package.lMsgType}},
                {"text", text},
                {"bytes", bmc::hexText(bytes)},
                {"records", records ? recordsJson(*records) : Json()}},
           "type " + std::to_string(package.lMsgType) + "\n" +
               (records ? recordsText(*records) : "text " + escaped(text) + "\n"));
}

void receive(const ReceiveArguments &arguments, Session &session)
{
    const QueueName &queue = arguments.queue;
    NW_MSG_PACKAGE_S package{};
    {
        const TimeLimit limit(limitIn(arguments.limit));
        const NW_RESULT result =
            NW_ReceiveMsg(queue.path.c_str(), queue.id(), NW_MSG_TEXT_SIZE, &package);
        requireDone(result, queue, limit.isOver());
    }
    printMessage(package, arguments.wantsRecords, session);
}

void declareName(CLI::App &app, QueueName &queue)
{
    app.add_option("PATH", queue.path, "existing file that names the queue")
        ->required()
        ->type_name("");
    app.add_option("ID", queue.idText, "project id, 1 to 255")->required()->type_name("");
}

void declareCreate(CLI::App &app, Session &session)
{
    const auto queue = std::make_shared<QueueName>();
    declareName(app, *queue);
    app.callback([queue, &session] { create(*queue, session); });
}

void declareSend(CLI::App &app, Session &session)
{
    const auto arguments = std::make_shared<SendArguments>();
    declareName(app, arguments->queue);
    const CLI::Option *text =
        app.add_option("TEXT", arguments->text, "text of at most 255 bytes")->type_name("");
    app.add_option("--tlv", arguments->records, "record instead of a text; may be repeated")
        ->type_name("TYPE:HEX")
        ->allow_extra_args(false);
    app.add_option("--type", arguments->type, "message type, 1 or more")->type_name("N");
    declareLimit(app, arguments->limit);
    app.callback([arguments, text, &session] {
        if (text->empty() == arguments->records.empty()) {
            throw Failure(Exit::usage, "TEXT", arguments->text, "give either a text or --tlv");
        }
        send(*arguments, session);
    });
}

void declareReceive(CLI::App &app, Session &session)
{
    const auto arguments = std::make_shared<ReceiveArguments>();
    declareName(app, arguments->queue);
    app.add_flag("--tlv", arguments->wantsRecords, "show the message's records");
    declareLimit(app, arguments->limit);
    app.callback([arguments, &session] { receive(*arguments, session); });
}

} // namespace

void addQueueCommands(std::vector<Command> &commands)
{
    /* clang-format off */
    commands.insert(commands.end(), {
        {"queue", "create",  "Make an empty queue; an earlier one goes with its messages", "queue create /etc/hostname 7",              declareCreate},
        {"queue", "send",    "Send a message; waits while the queue is full",              "queue send /etc/hostname 7 --type 2 hello", declareSend},
        {"queue", "receive", "Take the first message; waits until there is one",           "queue receive /etc/hostname 7 --timeout 5", declareReceive},
    });
    /* clang-format on */
}

} // namespace nwctl

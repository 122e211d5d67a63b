// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Scriptable platform: stands in for every function of bmc_platform.h in tests.
 *
 *     fake::Platform &p = fake::platform();     // the process's one instance
 *     p.reset();                                // an empty, healthy platform
 *     p.setRecord(NW_KEY_DNS, stRecord);        // database contents
 *     p.failGet(NW_KEY_DNS, -5, {0xEE});        // ... or a failing read that scribbles first
 *     p.answerRpc(fake::RpcAnswer::response(0, 1));
 *     ...
 *     p.calls();                                // what was asked of the platform, in order
 *     p.lines();                                // the diagnostic lines among it
 *
 * A healthy platform opens its database, holds no records, capabilities, files or wireless record
 * (reading one fails), answers every RPC call with 264 zero bytes and every command with 0.
 * The reference platform's further functions work too: a snapshot, and several records at once.
 * The bounded text functions really work and are not recorded. One thread at a time.
 * The fixture and the matchers for googletest stand in fake_matchers.hpp. */
#ifndef FAKE_PLATFORM_HPP
#define FAKE_PLATFORM_HPP

#include <cstdint>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace fake {

using Bytes = std::vector<std::uint8_t>;

/* The bytes of a record or value. */
template <typename Record>
Bytes bytesOf(const Record &record)
{
    Bytes bytes(sizeof(record));
    std::memcpy(bytes.data(), &record, sizeof(record));
    return bytes;
}

/* Codes of the fake's own. */
inline constexpr int missing = -404;   /* no such record, capability or file */
inline constexpr int wrongSize = -413; /* a record of another size is stored */

/* One platform call. A field that the call does not have stays empty. */
struct Call {
    std::string name;             /* "DB_Get" */
    const void *handle = nullptr; /* DB_*: environment or database passed */
    const void *buffer = nullptr; /* output, data or request pointer passed */
    std::uint32_t key = 0;        /* DB_*: record key; NW_GetAnStatus: port */
    std::uint32_t size = 0;       /* length passed */
    std::uint32_t line = 0;       /* DB_PutInternal: source line */
    std::uint32_t service = 0;    /* MRPC_Call */
    std::uint32_t function = 0;   /* MRPC_Call */
    std::uint32_t timeout = 0;    /* MRPC_Call, ms */
    bool messagePresent = false;  /* MRPC_*: *ppstMessage was not null on entry */
    std::string text;             /* path, command, capability group, source file, log text */
    std::string item;             /* capability name */
    Bytes data;                   /* bytes passed; DB_Get: the buffer's before the read */
    std::vector<std::pair<std::uint32_t, Bytes>> records; /* BMC_PutRecords: keys and bytes */
};

struct LogLine {
    std::uint32_t module = 0;
    std::uint32_t category = 0;
    std::uint32_t level = 0;
    std::uint32_t line = 0;
    std::string file;
    std::string format;
    std::string text; /* formatted */
};

/* How one MRPC_Call ends. */
struct RpcAnswer {
    int code = 0;
    bool message = true;       /* hand out a message */
    std::optional<Bytes> data; /* its data; none: a null data pointer */

    static RpcAnswer failure(int code);
    /* A failed call that leaves a message behind all the same. */
    static RpcAnswer failureWithMessage(int code);
    static RpcAnswer noMessage();
    static RpcAnswer noData();
    /* 264 bytes: result, detail, then the data given, the rest zero. */
    static RpcAnswer response(std::uint32_t result, std::uint32_t detail = 0,
                              const Bytes &data = {});
};

struct AnStatus {
    std::uint8_t autoNegotiation = 0;
    std::uint8_t duplex = 0;
    std::uint8_t speed = 0;
    int code = 0; /* what the call answers; the outputs are filled all the same */
};

class Platform {
public:
    void reset();

    /* ---- Script ---- */

    void failOpen(); /* DB_Open answers null */
    void failCurrentDb();
    void setRecord(std::uint32_t key, Bytes bytes);
    template <typename Record>
    requires(!std::is_same_v<Record, Bytes>) void setRecord(std::uint32_t key, const Record &record)
    {
        setRecord(key, bytesOf(record));
    }
    /* The read answers code; scribble overwrites the beginning of the caller's buffer first. */
    void failGet(std::uint32_t key, int code, Bytes scribble = {});
    void failPut(std::uint32_t key, int code); /* several records with this one fail as well */
    void failSnapshot(int code);
    void setBackup(std::map<std::uint32_t, Bytes> records);

    /* Answers are used up in the order given; the last one serves all further calls. */
    void answerRpc(RpcAnswer answer);
    /* Decides every call; answers given by answerRpc are then ignored. */
    void answerRpc(std::function<RpcAnswer(const Call &)> decide);

    void setCapability(const std::string &group, const std::string &name, std::uint16_t value);
    void setCapability(const std::string &group, const std::string &name, const std::string &value);
    /* The output stays untouched. */
    void failCapability(const std::string &group, const std::string &name, int code);

    void setWireless(Bytes record); /* 1627 bytes */
    void setWireless(bool enabled, const std::string &ipv4);
    /* The read answers code after filling the buffer with scribble. */
    void failWireless(int code, std::uint8_t scribble = 0);

    void setAnStatus(std::uint32_t port, AnStatus status);
    void setProc(const std::string &path, Bytes contents);
    void failProcWrite(const std::string &path, int code);
    void setPathExists(const std::string &path);
    void setCommandStatus(int status);
    void setLogResult(int result); /* answer of BMC_DiagLogOut */
    void setRecording(bool on);    /* off: neither calls nor lines are kept, for benchmarks */

    /* ---- Record ---- */

    const std::vector<Call> &calls() const;
    std::vector<std::string> callNames() const; /* in order, log lines included */
    std::vector<Call> callsTo(const std::string &name) const;
    const std::vector<LogLine> &lines() const;
    std::optional<Bytes> record(std::uint32_t key) const;     /* database contents */
    std::optional<Bytes> proc(const std::string &path) const; /* as last set or written */
    std::size_t liveMessages() const; /* RPC messages handed out and not yet released */
    void clearCalls();                /* forgets calls and lines, keeps the script */

    /* Handles that DB_Open and DB_GetCurrentDb answer. */
    void *environment();
    void *database();

    /* The platform functions' view; not for tests. */
    struct State;
    State &state();
    const State &state() const;
};

Platform &platform();

/* Same text as printf's. */
std::string formatted(const char *format, ...);

/* Everything scripted and recorded. */
struct Platform::State {
    using CapabilityKey = std::pair<std::string, std::string>;
    struct Capability {
        int code = 0;
        std::uint16_t number = 0;
        std::string text;
    };
    struct FailedGet {
        int code = 0;
        Bytes scribble;
    };
    struct Wireless {
        int code = 0;
        Bytes record;
    };

    bool openFails = false;
    bool currentDbFails = false;
    std::map<std::uint32_t, Bytes> records;
    std::map<std::uint32_t, FailedGet> failedGets;
    std::map<std::uint32_t, int> failedPuts;
    int snapshotFails = 0;
    unsigned snapshotDepth = 0;
    int snapshotCode = 0;
    std::map<std::uint32_t, Bytes> snapshot;
    std::optional<std::map<std::uint32_t, Bytes>> backup;
    std::deque<RpcAnswer> answers;
    std::function<RpcAnswer(const Call &)> decide;
    std::map<CapabilityKey, Capability> capabilities;
    Wireless wireless{missing, {}};
    std::map<std::uint32_t, AnStatus> anStatus;
    std::map<std::string, Bytes> proc;
    std::map<std::string, int> failedProcWrites;
    std::set<std::string> paths;
    int commandStatus = 0;
    int logResult = 0;
    bool recording = true;

    std::vector<Call> calls;
    std::vector<LogLine> lines;
    std::size_t liveMessages = 0;
};

} // namespace fake

#endif

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "fake_platform.hpp"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <iterator>

#include "bmc_platform.h"

namespace fake {

namespace {

constexpr std::size_t responseSize = 264;

Platform::State current;
int environmentTag;
int databaseTag;

template <typename Key>
std::optional<Bytes> find(const std::map<Key, Bytes> &map, const Key &key)
{
    const auto found = map.find(key);
    return found == map.end() ? std::nullopt : std::optional(found->second);
}

} // namespace

RpcAnswer RpcAnswer::failure(int code)
{
    return {code, false, std::nullopt};
}

RpcAnswer RpcAnswer::failureWithMessage(int code)
{
    RpcAnswer answer = response(0x55555555U, 0x55555555U);
    answer.code = code;
    return answer;
}

RpcAnswer RpcAnswer::noMessage()
{
    return {0, false, std::nullopt};
}

RpcAnswer RpcAnswer::noData()
{
    return {0, true, std::nullopt};
}

RpcAnswer RpcAnswer::response(std::uint32_t result, std::uint32_t detail, const Bytes &data)
{
    Bytes bytes(responseSize);
    std::memcpy(bytes.data(), &result, sizeof(result));
    std::memcpy(bytes.data() + sizeof(result), &detail, sizeof(detail));
    std::copy_n(data.begin(), std::min(data.size(), responseSize - 8), bytes.begin() + 8);
    return {0, true, bytes};
}

Platform &platform()
{
    static Platform instance;
    return instance;
}

Platform::State &Platform::state()
{
    return current;
}

const Platform::State &Platform::state() const
{
    return current;
}

void Platform::reset()
{
    current = State{};
}

void Platform::failOpen()
{
    current.openFails = true;
}

void Platform::failCurrentDb()
{
    current.currentDbFails = true;
}

void Platform::setRecord(std::uint32_t key, Bytes bytes)
{
    current.failedGets.erase(key);
    current.records[key] = std::move(bytes);
}

void Platform::failGet(std::uint32_t key, int code, Bytes scribble)
{
    current.failedGets[key] = {code, std::move(scribble)};
}

void Platform::failPut(std::uint32_t key, int code)
{
    current.failedPuts[key] = code;
}

void Platform::failSnapshot(int code)
{
    current.snapshotFails = code;
}

void Platform::setBackup(std::map<std::uint32_t, Bytes> records)
{
    current.backup = std::move(records);
}

void Platform::answerRpc(RpcAnswer answer)
{
    current.answers.push_back(std::move(answer));
}

void Platform::answerRpc(std::function<RpcAnswer(const Call &)> decide)
{
    current.decide = std::move(decide);
}

void Platform::setCapability(const std::string &group, const std::string &name, std::uint16_t value)
{
    current.capabilities[{group, name}] = {0, value, {}};
}

void Platform::setCapability(const std::string &group, const std::string &name,
                             const std::string &value)
{
    current.capabilities[{group, name}] = {0, 0, value};
}

void Platform::failCapability(const std::string &group, const std::string &name, int code)
{
    current.capabilities[{group, name}] = {code, 0, {}};
}

void Platform::setWireless(Bytes record)
{
    current.wireless = {0, std::move(record)};
}

void Platform::setWireless(bool enabled, const std::string &ipv4)
{
    Bytes record(BMC_WIRELESS_INFO_SIZE);
    record[BMC_WIRELESS_ENABLE_OFFSET] = enabled ? 1 : 0;
    std::copy(ipv4.begin(), ipv4.end(), record.begin() + BMC_WIRELESS_IPV4_TEXT_OFFSET);
    setWireless(std::move(record));
}

void Platform::failWireless(int code, std::uint8_t scribble)
{
    current.wireless = {code, Bytes(scribble == 0 ? 0 : BMC_WIRELESS_INFO_SIZE, scribble)};
}

void Platform::setAnStatus(std::uint32_t port, AnStatus status)
{
    current.anStatus[port] = status;
}

void Platform::setProc(const std::string &path, Bytes contents)
{
    current.proc[path] = std::move(contents);
}

void Platform::failProcWrite(const std::string &path, int code)
{
    current.failedProcWrites[path] = code;
}

void Platform::setPathExists(const std::string &path)
{
    current.paths.insert(path);
}

void Platform::setCommandStatus(int status)
{
    current.commandStatus = status;
}

void Platform::setLogResult(int result)
{
    current.logResult = result;
}

void Platform::setRecording(bool on)
{
    current.recording = on;
}

const std::vector<Call> &Platform::calls() const
{
    return current.calls;
}

std::vector<std::string> Platform::callNames() const
{
    std::vector<std::string> names;
    for (const Call &call : current.calls) {
        names.push_back(call.name);
    }
    return names;
}

std::vector<Call> Platform::callsTo(const std::string &name) const
{
    std::vector<Call> found;
    std::copy_if(current.calls.begin(), current.calls.end(), std::back_inserter(found),
                 [&](const Call &call) { return call.name == name; });
    return found;
}

const std::vector<LogLine> &Platform::lines() const
{
    return current.lines;
}

std::optional<Bytes> Platform::record(std::uint32_t key) const
{
    return find(current.records, key);
}

std::optional<Bytes> Platform::proc(const std::string &path) const
{
    return find(current.proc, path);
}

std::size_t Platform::liveMessages() const
{
    return current.liveMessages;
}

void Platform::clearCalls()
{
    current.calls.clear();
    current.lines.clear();
}

void *Platform::environment()
{
    return &environmentTag;
}

void *Platform::database()
{
    return &databaseTag;
}

std::string formatted(const char *format, ...)
{
    std::array<char, 4096> buffer{};
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
    va_end(arguments);
    return buffer.data();
}

} // namespace fake

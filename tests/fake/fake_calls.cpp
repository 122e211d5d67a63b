// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The platform functions themselves. */
#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <memory>

#include "bmc_platform.h"
#include "fake_platform.hpp"

namespace {

using fake::Bytes;
using fake::Call;

fake::Platform::State &state()
{
    return fake::platform().state();
}

Call &note(const char *name)
{
    if (!state().recording) {
        static Call forgotten;
        return forgotten = Call{};
    }
    state().calls.emplace_back().name = name;
    return state().calls.back();
}

Bytes copyOf(const void *data, std::uint32_t size)
{
    const auto *bytes = static_cast<const std::uint8_t *>(data);
    return bytes == nullptr ? Bytes{} : Bytes(bytes, bytes + size);
}

/* Copies at most size bytes. */
void fill(void *buffer, const Bytes &bytes, std::size_t size)
{
    std::copy_n(bytes.begin(), std::min(bytes.size(), size), static_cast<std::uint8_t *>(buffer));
}

/* An RPC message that owns its data; the library sees its first part. */
struct OwnedMessage : MRPC_MSG {
    Bytes bytes;
};

fake::RpcAnswer nextAnswer(const Call &call)
{
    if (state().decide) {
        return state().decide(call);
    }
    if (state().answers.empty()) {
        return fake::RpcAnswer::response(0);
    }

    const fake::RpcAnswer answer = state().answers.front();
    if (state().answers.size() > 1) {
        state().answers.pop_front();
    }
    return answer;
}

Call &noteCapability(const char *name, const char *group, const char *item, const void *buffer)
{
    Call &call = note(name);
    call.text = group;
    call.item = item;
    call.buffer = buffer;
    return call;
}

/* Null when the capability cannot be read; code says why. */
const fake::Platform::State::Capability *findCapability(const Call &call, int &code)
{
    const auto found = state().capabilities.find({call.text, call.item});
    code = found == state().capabilities.end() ? fake::missing : found->second.code;
    return code == 0 ? &found->second : nullptr;
}

template <typename Number>
int readNumber(const Call &call, Number *value)
{
    int code = 0;
    if (const auto *capability = findCapability(call, code)) {
        *value = static_cast<Number>(capability->number);
    }
    return code;
}

Call &noteProc(const char *name, const char *path, std::uint32_t length, const void *buffer)
{
    Call &call = note(name);
    call.text = path;
    call.size = length;
    call.buffer = buffer;
    return call;
}

} // namespace

int BMC_DiagLogOut(uint32_t uiModule, uint32_t uiCategory, uint32_t uiLevel, uint32_t uiLine,
                   const char *pcFile, const char *pcFormat, ...)
{
    if (!state().recording) {
        return state().logResult;
    }

    std::array<char, 4096> text{};
    va_list arguments;
    va_start(arguments, pcFormat);
    std::vsnprintf(text.data(), text.size(), pcFormat, arguments);
    va_end(arguments);

    state().lines.push_back({uiModule, uiCategory, uiLevel, uiLine, pcFile, pcFormat, text.data()});
    note("BMC_DiagLogOut").text = text.data();
    if (state().observeLine) {
        state().observeLine();
    }
    return state().logResult;
}

size_t BMC_Strlcpy(char *pcDst, const char *pcSrc, size_t ulSize)
{
    const size_t length = std::strlen(pcSrc);
    if (ulSize != 0) {
        const size_t copied = std::min(length, ulSize - 1);
        std::memcpy(pcDst, pcSrc, copied);
        pcDst[copied] = '\0';
    }
    return length;
}

size_t BMC_Strlcat(char *pcDst, const char *pcSrc, size_t ulSize)
{
    const size_t used = strnlen(pcDst, ulSize);
    if (used == ulSize) {
        return ulSize + std::strlen(pcSrc);
    }
    return used + BMC_Strlcpy(pcDst + used, pcSrc, ulSize - used);
}

int BMC_Scnprintf(char *pcBuf, size_t ulSize, const char *pcFormat, ...)
{
    if (ulSize == 0) {
        return 0;
    }

    va_list arguments;
    va_start(arguments, pcFormat);
    const int wanted = std::vsnprintf(pcBuf, ulSize, pcFormat, arguments);
    va_end(arguments);
    return std::clamp(wanted, 0, static_cast<int>(ulSize) - 1);
}

int BMC_SafeSystem(const char *pcCommand)
{
    note("BMC_SafeSystem").text = pcCommand;
    return state().commandStatus;
}

int BMC_CheckDirVaildStatus(const char *pcPath)
{
    note("BMC_CheckDirVaildStatus").text = pcPath;
    return state().paths.contains(pcPath) ? 1 : 0;
}

void *DB_Open(void)
{
    note("DB_Open");
    return state().openFails ? nullptr : fake::platform().environment();
}

void *DB_GetCurrentDb(void *pEnv)
{
    note("DB_GetCurrentDb").handle = pEnv;
    return state().currentDbFails ? nullptr : fake::platform().database();
}

int DB_Get(void *pDb, uint32_t uiKey, uint32_t uiSize, void *pBuffer)
{
    Call &call = note("DB_Get");
    call.handle = pDb;
    call.key = uiKey;
    call.size = uiSize;
    call.buffer = pBuffer;
    call.data = copyOf(pBuffer, uiSize);

    if (const auto failed = state().failedGets.find(uiKey); failed != state().failedGets.end()) {
        fill(pBuffer, failed->second.scribble, uiSize);
        return failed->second.code;
    }
    if (state().snapshotDepth != 0 && state().snapshotCode != 0) {
        return state().snapshotCode;
    }
    const auto &records = state().snapshotDepth != 0 ? state().snapshot : state().records;
    const auto found = records.find(uiKey);
    if (found == records.end()) {
        return fake::missing;
    }
    if (found->second.size() != uiSize) {
        return fake::wrongSize;
    }
    fill(pBuffer, found->second, uiSize);
    return 0;
}

int DB_PutInternal(const char *pcFile, uint32_t uiLine, void *pDb, uint32_t uiKey, uint32_t uiSize,
                   const void *pData)
{
    Call &call = note("DB_PutInternal");
    call.text = pcFile;
    call.line = uiLine;
    call.handle = pDb;
    call.key = uiKey;
    call.size = uiSize;
    call.buffer = pData;
    call.data = copyOf(pData, uiSize);

    if (const auto failed = state().failedPuts.find(uiKey); failed != state().failedPuts.end()) {
        return failed->second;
    }
    fake::platform().setRecord(uiKey, call.data);
    return 0;
}

int MRPC_Call(uint32_t uiService, uint32_t uiFunction, uint32_t uiLength, const void *pRequest,
              uint32_t uiTimeoutMs, MRPC_MSG **ppstMessage)
{
    Call &call = note("MRPC_Call");
    call.service = uiService;
    call.function = uiFunction;
    call.size = uiLength;
    call.buffer = pRequest;
    call.timeout = uiTimeoutMs;
    call.messagePresent = *ppstMessage != nullptr;
    call.data = copyOf(pRequest, uiLength);

    const fake::RpcAnswer answer = nextAnswer(Call(call));
    if (answer.message) {
        auto message = std::make_unique<OwnedMessage>();
        message->bytes = answer.data.value_or(Bytes{});
        message->pData = answer.data ? message->bytes.data() : nullptr;
        *ppstMessage = message.release();
        ++state().liveMessages;
    }
    return answer.code;
}

void MRPC_MsgFree(MRPC_MSG **ppstMessage)
{
    note("MRPC_MsgFree").messagePresent = *ppstMessage != nullptr;
    if (*ppstMessage != nullptr) {
        --state().liveMessages;
        delete static_cast<OwnedMessage *>(*ppstMessage);
        *ppstMessage = nullptr;
    }
}

int CAP_GetCharCapabilityWithName(const char *pcGroup, const char *pcName, uint8_t *pucValue)
{
    return readNumber(noteCapability("CAP_GetCharCapabilityWithName", pcGroup, pcName, pucValue),
                      pucValue);
}

int CAP_GetShortCapabilityWithName(const char *pcGroup, const char *pcName, uint16_t *pusValue)
{
    return readNumber(noteCapability("CAP_GetShortCapabilityWithName", pcGroup, pcName, pusValue),
                      pusValue);
}

int CAP_GetCommonCapabilityWithName(const char *pcGroup, const char *pcName, uint32_t uiMaxLength,
                                    void *pValue)
{
    Call &call = noteCapability("CAP_GetCommonCapabilityWithName", pcGroup, pcName, pValue);
    call.size = uiMaxLength;

    int code = 0;
    if (const auto *capability = findCapability(call, code)) {
        const std::string &text = capability->text;
        std::memcpy(pValue, text.c_str(), std::min<size_t>(text.size() + 1, uiMaxLength));
    }
    return code;
}

int NW_ReadProc(const char *pcPath, uint32_t uiLength, void *pData)
{
    noteProc("NW_ReadProc", pcPath, uiLength, pData);

    const auto contents = fake::platform().proc(pcPath);
    if (!contents) {
        return fake::missing;
    }
    fill(pData, *contents, uiLength);
    return 0;
}

int NW_WriteProc(const char *pcPath, uint32_t uiLength, const void *pData)
{
    noteProc("NW_WriteProc", pcPath, uiLength, pData).data = copyOf(pData, uiLength);

    const auto failed = state().failedProcWrites.find(pcPath);
    if (failed != state().failedProcWrites.end()) {
        return failed->second;
    }
    state().proc[pcPath] = copyOf(pData, uiLength);
    return 0;
}

int NW_GetAnStatus(uint32_t uiPort, uint8_t *pucAutoNeg, uint8_t *pucDuplex, uint8_t *pucSpeed)
{
    note("NW_GetAnStatus").key = uiPort;

    const auto found = state().anStatus.find(uiPort);
    if (found == state().anStatus.end()) {
        return fake::missing;
    }
    *pucAutoNeg = found->second.autoNegotiation;
    *pucDuplex = found->second.duplex;
    *pucSpeed = found->second.speed;
    return found->second.code;
}

int USBMANAGE_GetWirelessServiceInfo(void *pBuffer)
{
    note("USBMANAGE_GetWirelessServiceInfo").buffer = pBuffer;

    const auto &wireless = state().wireless;
    fill(pBuffer, wireless.record, BMC_WIRELESS_INFO_SIZE);
    return wireless.code;
}

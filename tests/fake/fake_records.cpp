// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the reference platform offers its own programs. */
#include "fake_platform.hpp"
#include "platform/records.hpp"
#include "platform/wireless.hpp"

namespace {

fake::Platform::State &state()
{
    return fake::platform().state();
}

fake::Call callOf(const char *name)
{
    fake::Call call;
    call.name = name;
    return call;
}

void note(fake::Call call)
{
    if (state().recording) {
        state().calls.push_back(std::move(call));
    }
}

} // namespace

int BMC_PutRecords(const BMC_RECORD_WRITE_S *pstRecords, std::uint32_t uiCount)
{
    fake::Call call = callOf("BMC_PutRecords");
    call.size = uiCount;
    int code = 0;
    for (std::uint32_t record = 0; record < uiCount; ++record) {
        const BMC_RECORD_WRITE_S &write = pstRecords[record];
        const auto *bytes = static_cast<const std::uint8_t *>(write.pData);
        call.records.emplace_back(write.uiKey, fake::Bytes(bytes, bytes + write.uiSize));
        const auto failed = state().failedPuts.find(write.uiKey);
        code = failed != state().failedPuts.end() ? failed->second : code;
    }
    note(call);

    if (code == 0) {
        for (const auto &[key, bytes] : call.records) {
            fake::platform().setRecord(key, bytes);
        }
    }
    return code;
}

int BMC_BeginSnapshot(void)
{
    note(callOf("BMC_BeginSnapshot"));
    if (state().snapshotDepth++ == 0) {
        state().snapshotCode = state().snapshotFails;
        state().snapshot = state().records;
    }
    return state().snapshotCode;
}

void BMC_EndSnapshot(void)
{
    note(callOf("BMC_EndSnapshot"));
    if (state().snapshotDepth != 0) {
        --state().snapshotDepth;
    }
}

int BMC_ReadBackup(void (*pfRecord)(void *pContext, const BMC_RECORD_WRITE_S *pstRecord),
                   void *pContext)
{
    note(callOf("BMC_ReadBackup"));
    if (!state().backup) {
        return fake::missing;
    }
    for (const auto &[key, bytes] : *state().backup) {
        const BMC_RECORD_WRITE_S record{key, static_cast<std::uint32_t>(bytes.size()),
                                        bytes.data()};
        pfRecord(pContext, &record);
    }
    return 0;
}

int BMC_GetWirelessState(void)
{
    note(callOf("BMC_GetWirelessState"));
    const int code = state().wireless.code;
    if (code == 0) {
        return BMC_WIRELESS_READ;
    }
    return code == fake::missing ? BMC_WIRELESS_ABSENT : BMC_WIRELESS_MALFORMED;
}

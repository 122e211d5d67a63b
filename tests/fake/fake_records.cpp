// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the reference platform offers its own programs. */
#include "fake_platform.hpp"
#include "platform/records.hpp"

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

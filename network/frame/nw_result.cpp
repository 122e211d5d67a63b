// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Result codes as IPMI completion codes. */
#include "nw_frame.h"

namespace {

struct NW_COMPLETION_S {
    NW_RESULT uiCode;
    uint32_t uiCompletion;
};

/* The first match wins; the repeated codes are part of the table. */
/* clang-format off */
constexpr NW_COMPLETION_S s_astCompletion[] = {
    {0x1E000010, NW_IPMI_CC_INVALID_DATA},
    {0x1E000011, NW_IPMI_CC_INVALID_DATA},
    {0x9E000006, NW_IPMI_CC_INVALID_DATA},
    {0x1E000009, NW_IPMI_CC_INVALID_DATA},
    {0x1E00000A, NW_IPMI_CC_INVALID_DATA},
    {0x1E00000B, NW_IPMI_CC_INVALID_DATA},
    {0x9E000008, NW_IPMI_CC_INVALID_DATA},
    {0x1E00000C, NW_IPMI_CC_INVALID_DATA},
    {0x1E00000D, NW_IPMI_CC_INVALID_DATA},
    {0x1E00000E, NW_IPMI_CC_INVALID_DATA},
    {0x1E000012, NW_IPMI_CC_INVALID_DATA},
    {0x1E000012, NW_IPMI_CC_INVALID_DATA},
    {0x1E000013, NW_IPMI_CC_INVALID_DATA},
    {0x1E000014, NW_IPMI_CC_INVALID_DATA},
    {0x1E000015, NW_IPMI_CC_INVALID_DATA},
    {0x1E000017, NW_IPMI_CC_INVALID_DATA},
    {0x1E000018, NW_IPMI_CC_INVALID_DATA},
    {0x1E000019, NW_IPMI_CC_INVALID_DATA},
    {0x1E00001A, NW_IPMI_CC_INVALID_DATA},
    {0x1E00001A, NW_IPMI_CC_INVALID_DATA},
    {0x1E000023, NW_IPMI_CC_OUT_OF_RANGE},
    {0x1E00000F, NW_IPMI_CC_INVALID_DATA},
    {0x1E00001D, NW_IPMI_CC_INVALID_DATA},
    {0x1E00001E, NW_IPMI_CC_INVALID_DATA},
    {0x1E00001F, NW_IPMI_CC_INVALID_DATA},
    {0x1E000001, NW_IPMI_CC_INVALID_DATA},
    {0x1E000021, NW_IPMI_CC_INVALID_DATA},
    {NW_ERR_OUT_OF_RANGE, NW_IPMI_CC_INVALID_DATA},
    {0x1E000036, NW_IPMI_CC_INVALID_DATA},
    {0x1E000004, NW_IPMI_CC_NOT_IN_STATE},
    {0x1E00001C, NW_IPMI_CC_NOT_IN_STATE},
    {NW_ERR_PORT_NOT_SUPPORTED, NW_IPMI_CC_INVALID_COMMAND},
    {0x1E00002C, NW_IPMI_CC_INVALID_DATA},
};
/* clang-format on */
static_assert(NW_CountOf(s_astCompletion) == 33);

/* An extra mark that the family carries; it does not change the error. */
constexpr uint32_t NW_RESULT_MARK = 0xE00;

} // namespace

uint32_t LIB_NW_ChangeInvErr2IpmiCC(uint32_t uiCode)
{
    const uint32_t uiPlain = uiCode & ~NW_RESULT_MARK;

    for (const NW_COMPLETION_S &stRow : s_astCompletion) {
        if (stRow.uiCode == uiPlain) {
            return stRow.uiCompletion;
        }
    }
    return NW_IPMI_CC_UNSPECIFIED;
}

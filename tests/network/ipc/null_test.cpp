// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Null checks of the messages, events and the heartbeat: before anything else is looked at. */
#include <type_traits>

#include "network_mng.h"
#include "null_checks.hpp"
#include "package.hpp"
#include "queue_calls.hpp"

namespace {

using fake::NullRow;

constexpr int project = 7;

/* Refused by its type, were it looked at. */
NW_MSG_PACKAGE_S *refusedPackage()
{
    static NW_MSG_PACKAGE_S stPackage{};
    return &stPackage;
}

/* A call without a result of its own. */
template <typename... Parameters>
std::uint32_t quiet(void (*function)(Parameters...), std::type_identity_t<Parameters>... arguments)
{
    function(arguments...);
    return 0;
}

std::uint8_t one = 1;
std::uint32_t total = 0xFFFFFFFF;

/* clang-format off */
const NullRow rows[] = {
    {"Create", "NM_CreateMsg", "pcPath", [] { return NM_CreateMsg(nullptr, project); }},
    {"SendPath", "NW_SendMsg", "pcPath",
     [] { return NW_SendMsg(nullptr, project, 256, refusedPackage()); }},
    {"SendPackage", "NW_SendMsg", "pstMsgPackage",
     [] { return NW_SendMsg("/none", project, 256, nullptr); }},
    {"SendBoth", "NW_SendMsg", "pcPath",
     [] { return NW_SendMsg(nullptr, project, 256, nullptr); }},
    {"ReceivePath", "NW_ReceiveMsg", "pcPath",
     [] { return NW_ReceiveMsg(nullptr, project, 256, refusedPackage()); }},
    {"ReceivePackage", "NW_ReceiveMsg", "pstMsgPackage",
     [] { return NW_ReceiveMsg("/none", project, 256, nullptr); }},
    {"ReceiveBoth", "NW_ReceiveMsg", "pcPath",
     [] { return NW_ReceiveMsg(nullptr, project, 256, nullptr); }},
    {"TlvValue", "NW_FillTlv", "pInValue",
     [] { return quiet(NW_FillTlv, 1, 1, nullptr, &total, &one); }, 0},
    {"TlvTotal", "NW_FillTlv", "puiTotalLen",
     [] { return quiet(NW_FillTlv, 1, 1, &one, nullptr, &one); }, 0},
    {"TlvOutput", "NW_FillTlv", "pOutValue",
     [] { return quiet(NW_FillTlv, 1, 1, &one, &total, nullptr); }, 0},
    {"TlvEmptyValue", "NW_FillTlv", "pInValue",
     [] { return quiet(NW_FillTlv, 0, 1, nullptr, &total, &one); }, 0},
    {"TlvLastTwo", "NW_FillTlv", "puiTotalLen",
     [] { return quiet(NW_FillTlv, 1, 1, &one, nullptr, nullptr); }, 0},
    {"TlvAll", "NW_FillTlv", "pInValue",
     [] { return quiet(NW_FillTlv, 1, 1, nullptr, nullptr, nullptr); }, 0},
    {"AddEvent", "NW_AddNetworkEvent", "pstEventHldr",
     [] { return quiet(NW_AddNetworkEvent, 3, 2040, nullptr); }, 0},
    {"FindEvent", "NW_FindNetworkEvent", "pstEventHldr",
     [] { return NW_FindNetworkEvent(0, 2040, nullptr); }, 0},
    {"AddEventByQ", "NW_AddNetworkEventByQ", "pucEventQ",
     [] { return quiet(NW_AddNetworkEventByQ, nullptr, 2040); }, 0},
    {"FindEventByQ", "NW_FindNetworkEventByQ", "pucEventQ",
     [] { return NW_FindNetworkEventByQ(nullptr, 2040); }, 0},
    {"BackUpEvents", "NW_BackUpNetworkEvent", "pstEventHldr",
     [] { return quiet(NW_BackUpNetworkEvent, 1, nullptr); }, 0},
    {"RestoreEvents", "NW_BackUpNetworkEvent", "pstEventHldr",
     [] { return quiet(NW_BackUpNetworkEvent, 0, nullptr); }, 0},
    {"Capability", "NW_CheckKezCapability", "pbIsSupport",
     [] { return NW_CheckKezCapability(nullptr); }},
    {"Heartbeat", "HeartbeatPostLogMsg", "pstMsg",
     [] { return HeartbeatPostLogMsg(nullptr, project); }},
};
/* clang-format on */

class IpcNull : public fake::NullArgument {};

TEST_P(IpcNull, IsLoggedAndAnsweredBeforeAnythingElse)
{
    queue_calls::play({});
    testing::internal::CaptureStdout();

    expectNullCheck();

    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_TRUE(queue_calls::calls().empty());
}

INSTANTIATE_TEST_SUITE_P(Ipc, IpcNull, testing::ValuesIn(rows), fake::RowName());

} // namespace

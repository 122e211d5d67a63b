// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The shared library on the platform template: it links, and answers what it documents for a
 * platform that has nothing. */
#include <gtest/gtest.h>

#include <string>

#include "bmc_platform.h"
#include "network_mng.h"

namespace {

template <typename Record, typename Read>
NW_RESULT resultOf(Read read)
{
    Record record{};
    return read(&record);
}

TEST(Template, HasNoDatabase)
{
    EXPECT_EQ(resultOf<NW_HOSTNAME_DB_INFO_S>(LIB_NW_GetHostName), NW_ERR_GENERAL);
    EXPECT_EQ(resultOf<NW_DNS_DB_INFO_S>(NW_LMDB_Get_DNS), NW_ERR_DB_ENVIRONMENT);
    EXPECT_EQ(resultOf<NW_IFC_STATE_DB_INFO_S>(NW_LMDB_Get_IfcState), NW_ERR_GENERAL);
    EXPECT_EQ(resultOf<NW_NCSI_DB_INFO_S>(LIB_NW_GetNcsiConfig), NW_ERR_GENERAL);
    EXPECT_EQ(resultOf<uint8_t>(NW_LMDB_Get_NetStatus), NW_ERR_DB_ENVIRONMENT);
    EXPECT_EQ(NW_LMDB_Put_NetStatus(0), NW_ERR_GENERAL);

    NW_ETHER_INS_INFO_S view{};
    EXPECT_EQ(LIB_NW_GetLanConfig("eth0", &view), NW_ERR_GENERAL);
}

TEST(Template, HasNoNetworkManager)
{
    NW_NET_MODE_SET_S request{};
    request.ucSetMask = 1;
    NW_OPER_LOG_S log{};

    EXPECT_EQ(LIB_NW_SetNetMode(reinterpret_cast<const uint8_t *>(&request), &log),
              NW_ERR_RPC_TRANSPORT);
    EXPECT_NE(std::string(log.szOperLog).find("Failed"), std::string::npos) << log.szOperLog;
    EXPECT_EQ(LIB_NW_SetNetworkRestart(0), NW_OK);
}

TEST(Template, HasNeitherCapabilitiesNorKernelFiles)
{
    uint8_t supported = 7;
    EXPECT_EQ(NW_CheckKezCapability(&supported), NW_ERR_GENERAL);
    EXPECT_EQ(supported, 7);
    EXPECT_EQ(LIB_NW_NcsiIsInitComplete(), 0U);
}

TEST(Template, ServesWhatNeedsNoPlatform)
{
    const uint8_t address[] = {192, 168, 20, 7};
    EXPECT_EQ(LIB_NW_CheckV4IsValid(NW_V4CHK_HOST, address), 1U);
    EXPECT_EQ(LIB_NW_CheckV4IsValid(NW_V4CHK_HOST, nullptr), 0U);
}

TEST(Template, CopiesAndAppendsText)
{
    char text[6];
    EXPECT_EQ(BMC_Strlcpy(text, "abc", sizeof(text)), 3U);
    EXPECT_EQ(BMC_Strlcat(text, "defg", sizeof(text)), 7U);
    EXPECT_STREQ(text, "abcde");
    EXPECT_EQ(BMC_Strlcpy(text, "0123456", sizeof(text)), 7U);
    EXPECT_STREQ(text, "01234");
    EXPECT_EQ(BMC_Strlcpy(text, "xyz", 0), 3U);
    EXPECT_STREQ(text, "01234");
    EXPECT_EQ(BMC_Strlcat(text, "xyz", 2), 5U);
    EXPECT_STREQ(text, "01234");
}

TEST(Template, PrintsIntoItsRoom)
{
    char text[6] = "old";
    EXPECT_EQ(BMC_Scnprintf(text, sizeof(text), "%d", 123), 3);
    EXPECT_STREQ(text, "123");
    EXPECT_EQ(BMC_Scnprintf(text, sizeof(text), "%s", "0123456"), 5);
    EXPECT_STREQ(text, "01234");
    EXPECT_EQ(BMC_Scnprintf(text, 0, "%d", 9), 0);
    EXPECT_STREQ(text, "01234");
}

TEST(Template, LogsErrorsAlone)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(BMC_DiagLogOut(10, 0, 4, 12, "unit", "text %d\n", 5), 0);
    EXPECT_EQ(BMC_DiagLogOut(10, 0, 6, 12, "unit", "more"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "<4>unit:12 text 5\n");
}

} // namespace

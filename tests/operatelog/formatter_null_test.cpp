// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Null checks of the formatters (the value first), and of the two entry points. */
#include "network_mng.h"
#include "null_checks.hpp"

namespace {

using fake::NullRow;

const std::uint8_t value[300]{};
char output[300];
NW_OPER_LOG_S context;

#define FORMATTER(name)                                                                            \
    Formatter                                                                                      \
    {                                                                                              \
#name, name                                                                                \
    }

struct Formatter {
    std::string name;
    NW_OPERATE_LOG_FORMAT_FN format;
};

const Formatter formatters[] = {
    FORMATTER(NW_OperateLogParEnable),     FORMATTER(NW_OperateLogParManualAuto),
    FORMATTER(NW_OperateLogParDnsMode),    FORMATTER(NW_OperateLogParLanSrc),
    FORMATTER(NW_OperateLogParDuplex),     FORMATTER(NW_OperateLogParNetMode),
    FORMATTER(NW_OperateLogLLDPMode),      FORMATTER(NW_OperateLogParARPCtl),
    FORMATTER(NW_OperateLogParARPSuspend), FORMATTER(NW_OperateLogParStr),
    FORMATTER(NW_OperateLogParDNSDomain),  FORMATTER(NW_OperateLogParUshort),
    FORMATTER(NW_OperateLogParInt),        FORMATTER(NW_OperateLogParIpv4),
    FORMATTER(NW_OperateLogParIpv6),       FORMATTER(NW_OperateLogParIpv4Header),
    FORMATTER(NW_OperateLogParChannel),    FORMATTER(NW_OperateLogParNicPri),
    FORMATTER(NW_OperateLogParCardPri),
};
static_assert(std::size(formatters) == 19);

/* A function without a result answers 0. */
NullRow rowOf(const std::string &name, const std::string &function, const std::string &parameter,
              std::function<void()> call)
{
    const auto answerZero = [call = std::move(call)] {
        call();
        return 0U;
    };
    return {name, function, parameter, answerZero, 0, fake::operateLogUnit};
}

std::vector<NullRow> formatterRows()
{
    std::vector<NullRow> rows;
    for (const Formatter &formatter : formatters) {
        const std::string &name = formatter.name;
        const auto format = formatter.format;
        rows.push_back(rowOf(name + "_Value", name, "pucNwCfg",
                             [=] { format(nullptr, sizeof(output), output); }));
        rows.push_back(rowOf(name + "_Output", name, "pcOperLogDesc",
                             [=] { format(value, sizeof(output), nullptr); }));
        rows.push_back(rowOf(name + "_Both", name, "pucNwCfg",
                             [=] { format(nullptr, sizeof(output), nullptr); }));
    }
    return rows;
}

std::vector<NullRow> builderRows()
{
    const auto buildRow = [](const std::string &name, const std::string &parameter,
                             std::uint32_t result, const void *request, NW_OPER_LOG_S *log) {
        return rowOf(name, "NW_OperateLogBuild", parameter,
                     [=] { NW_OperateLogBuild(0x02, result, 1, request, log); });
    };
    const auto buildAllRow = [](const std::string &name, const std::string &parameter,
                                std::uint32_t result, const void *request, NW_OPER_LOG_S *log) {
        return rowOf(name, "NW_OperateLogBuildAll", parameter,
                     [=] { NW_OperateLogBuildAll(0x26, 0x02, result, 1, request, log); });
    };
    return {
        buildRow("BuildRequest", "pNetConfig", 0, nullptr, &context),
        buildRow("BuildFailureRequest", "pNetConfig", 1, nullptr, &context),
        buildRow("BuildContext", "pstOperLog", 0, value, nullptr),
        buildRow("BuildFailureContext", "pstOperLog", 1, value, nullptr),
        buildRow("BuildBoth", "pNetConfig", 0, nullptr, nullptr),
        buildAllRow("BuildAllRequest", "pstSetNetworkAll", 0, nullptr, &context),
        buildAllRow("BuildAllFailureRequest", "pstSetNetworkAll", 1, nullptr, &context),
        buildAllRow("BuildAllContext", "pstOperLog", 0, value, nullptr),
        buildAllRow("BuildAllFailureContext", "pstOperLog", 1, value, nullptr),
        buildAllRow("BuildAllBoth", "pstSetNetworkAll", 0, nullptr, nullptr),
    };
}

class OperateLogNull : public fake::NullArgument {};

TEST_P(OperateLogNull, IsLoggedAndWritesNothing)
{
    std::memset(output, 'x', sizeof(output));
    std::memset(&context, 'x', sizeof(context));

    expectNullCheck();

    EXPECT_THAT(output, testing::Each('x'));
    EXPECT_THAT(fake::bytesOf(context), testing::Each('x'));
}

INSTANTIATE_TEST_SUITE_P(Formatters, OperateLogNull, testing::ValuesIn(formatterRows()),
                         fake::RowName());
INSTANTIATE_TEST_SUITE_P(Builders, OperateLogNull, testing::ValuesIn(builderRows()),
                         fake::RowName());

} // namespace

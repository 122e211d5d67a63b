// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "diff": what the network manager tells of kernel and system. */
#include "samples.hpp"

namespace nwctl {
namespace {

constexpr const char *everyKind = R"([
    {"interface": "eth1", "stored": "address 192.0.2.1/24", "live": null, "foreign": false},
    {"interface": "eth1", "stored": null, "live": "address 192.0.2.2/24", "foreign": false},
    {"interface": null, "stored": "host name a", "live": "host name b", "foreign": false},
    {"interface": "eth0", "stored": null, "live": "address 192.0.2.3/24", "foreign": true}])";

constexpr const char *others = R"([
    {"interface": "eth0", "stored": null, "live": "address 192.0.2.3/24", "foreign": true}])";

class Diff : public samples::ConfiguredTest {};

} // namespace

TEST_F(Diff, TellsWhatIsNotAsItIsStored)
{
    answerDifferences(everyKind);
    const auto ran = samples::runLine("diff");
    EXPECT_EQ(ran.status, Exit::different);
    EXPECT_EQ(ran.out, "eth1: address 192.0.2.1/24 is stored and not there\n"
                       "eth1: address 192.0.2.2/24 is there and not stored\n"
                       "host name a is stored, host name b is there\n"
                       "eth0: address 192.0.2.3/24 is there, somebody else's\n");
    EXPECT_EQ(samples::runLine("--json diff").json()["differences"],
              nlohmann::json::parse(everyKind));
}

/* What others have is no fault. */
TEST_F(Diff, IsASuccessInLine)
{
    answerDifferences("[]");
    auto ran = samples::runLine("diff");
    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out, "Kernel and system are as it is stored.\n");
    answerDifferences(others);
    ran = samples::runLine("diff");
    EXPECT_EQ(ran.status, Exit::success);
    EXPECT_EQ(ran.out, "Kernel and system are as it is stored.\n"
                       "eth0: address 192.0.2.3/24 is there, somebody else's\n");
}

TEST_F(Diff, AnswerThatIsNone)
{
    for (const char *answer : {"", "{", "{}{}", "[1]", "[{}]", R"([{"interface": 1}])",
                               R"([{"interface": "a", "stored": null, "live": null}])"}) {
        answerDifferences(answer);
        EXPECT_EQ(samples::runLine("diff").status, Exit::transport) << answer;
    }
}

} // namespace nwctl

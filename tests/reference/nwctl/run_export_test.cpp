// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* "export": the stored configuration as the document that "apply" takes. */
#include <cstring>
#include <filesystem>
#include <fstream>

#include "samples.hpp"

namespace nwctl {
namespace {

using ::testing::HasSubstr;

class Export : public samples::ConfiguredTest {};

TEST_F(Export, WritesEverythingThatIsStored)
{
    const auto document = samples::run({"export"}).json();

    EXPECT_EQ(document["mode"], "separate");
    EXPECT_EQ(document["switchover"], false);
    EXPECT_EQ(document["ports"]["shared"]["name"], "eth1");
    EXPECT_EQ(document["hostname"]["bmc-name"], "rack-7");
    EXPECT_EQ(document["lldp"]["work-mode"], "txrx");
    EXPECT_EQ(document["lan"]["shared"]["ipv4"], "192.168.20.2/24");
    EXPECT_EQ(document["dns"]["shared"]["ipv4-server3"], "192.168.20.54");
    EXPECT_TRUE(document.contains("an"));
}

/* Stored by somebody else; it can be seen, and nobody takes it back. */
TEST_F(Export, ShowsBytesThatAreNoText)
{
    auto interfaces = samples::interfaces();
    std::memcpy(interfaces.acIfcName[1], "e\xff", 2);
    platform.setRecord(NW_KEY_IFC_STATE, interfaces);

    const auto ran = samples::run({"export"});

    EXPECT_EQ(ran.status, Exit::success) << ran.err;
    EXPECT_EQ(ran.json()["ports"]["shared"]["name"], "e\xEF\xBF\xBDh1");
}

TEST_F(Export, IsOneDocumentInEitherForm)
{
    EXPECT_EQ(samples::run({"export"}).out, samples::run({"export", "--json"}).out);
}

TEST_F(Export, ChangesNothingWhenItIsApplied)
{
    const std::filesystem::path path =
        std::filesystem::path(::testing::TempDir()) / "nwctl-export.json";
    std::ofstream(path) << samples::run({"export"}).out;

    const auto ran = samples::run({"apply", path.string(), "--dry-run"});
    std::filesystem::remove(path);

    EXPECT_EQ(ran.status, Exit::success) << ran.err;
    EXPECT_THAT(ran.out, HasSubstr("Would change nothing"));
}

TEST_F(Export, NeedsTheRecordsThatEveryConfigurationHas)
{
    platform.failGet(NW_KEY_LAN_CFG, -5);

    const auto ran = samples::run({"export"});

    EXPECT_EQ(ran.status, Exit::internal);
    EXPECT_EQ(ran.out, "");
}

} // namespace
} // namespace nwctl

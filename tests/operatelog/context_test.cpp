// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the builders may and may not do to the caller's context. */
#include "operate_log_fixture.hpp"

namespace operatelog {
namespace {

using testing::Each;
using testing::ElementsAre;

class Context : public OperateLogTest {
protected:
    static Change allOfLan()
    {
        Change change(lan);
        for (std::size_t port = 0; port < 3; ++port) {
            change.addAll(port, 0).addAll(port, 1);
        }
        return change;
    }
};

TEST_F(Context, TextIsCutAtTheSlotsEnd)
{
    std::string whole;
    for (std::size_t port = 0; port < 3; ++port) {
        whole += sentenceOf(lan, port, fieldsOf(lan, 0xFFFFFFFF, 0xFFFFFFFF));
    }
    ASSERT_GT(whole.size(), 1000U);

    const std::string text = build(lan, allOfLan().install());

    EXPECT_EQ(text, whole.substr(0, 511));
    EXPECT_EQ(log->szOperLog[511], '\0');
    EXPECT_THAT(lines(), ElementsAre(operLogLine(text)));
}

TEST_F(Context, SuccessIsAppendedBehindWhatTheSlotHolds)
{
    Change change(lldp);
    change.addAll(0);
    const std::string sentence = sentenceOf(lldp, 0, fieldsOf(lldp, 0xFF));
    for (const std::size_t held : {1U, 400U, 500U, 509U, 510U, 511U}) {
        *log = NW_OPER_LOG_S{};
        std::memset(log->szOperLog, 'h', held);
        poisonOtherSlots();

        NW_OperateLogBuild(lldp, 0, 0, change.install().data(), log.get());

        EXPECT_EQ(textOf(log->szOperLog), (std::string(held, 'h') + sentence).substr(0, 511));
        expectOtherSlotsUntouched();
    }
}

/* No slot of the context has a terminator: nothing may be looked for behind the first. */
TEST_F(Context, UnterminatedSlotIsNeverOverrun)
{
    for (const Layout &layout : layouts()) {
        platform.clearCalls();
        std::memset(log.get(), 'u', sizeof(*log));
        Change change(layout.module);
        change.addAll(0);

        NW_OperateLogBuild(layout.module, 0, 0, change.install().data(), log.get());

        const Bytes bytes = fake::bytesOf(*log);
        EXPECT_THAT(Bytes(bytes.begin(), bytes.begin() + 511), Each('u'));
        EXPECT_THAT(Bytes(bytes.begin() + 512, bytes.end() - 1), Each('u'));
        EXPECT_EQ(bytes.back(), 6);
        ASSERT_EQ(lines().size(), 1U);
        EXPECT_LE(lines().front().text.size(), std::string("OperLog .").size() + 512);
    }
}

TEST_F(Context, UnterminatedSlotIsNeverOverrunWithoutAText)
{
    std::memset(log.get(), 'u', sizeof(*log));
    const Bytes request(1);

    NW_OperateLogBuild(0x06, 1, 0, request.data(), log.get());

    ASSERT_EQ(lines().size(), 1U);
    EXPECT_LE(lines().front().text.size(), std::string("OperLog .").size() + 512);
    EXPECT_THAT(log->szLanOtherLog, Each('u'));
}

TEST_F(Context, FailureTerminatesAnUnterminatedSlot)
{
    std::memset(log.get(), 'u', sizeof(*log));
    const Bytes request(1);

    NW_OperateLogBuild(hostName, 1, 0, request.data(), log.get());

    EXPECT_EQ(textOf(log->szOperLog), "Failed to configure host name settings.");
    EXPECT_THAT(log->szLanOtherLog, Each('u'));
}

TEST_F(Context, LevelIsSetWhateverItWas)
{
    const Bytes request(8);
    for (const int before : {0, 6, 7, 255}) {
        log->ucLogLevel = static_cast<std::uint8_t>(before);
        NW_OperateLogBuild(lldp, 0, 0, request.data(), log.get());
        EXPECT_EQ(log->ucLogLevel, 6);
    }
}

TEST_F(Context, RequestIsLeftAsItWas)
{
    for (const Layout &layout : layouts()) {
        Change change(layout.module);
        change.addAll(0);
        const Bytes before = change.request();
        build(layout.module, change.install());
        EXPECT_EQ(change.request(), before);
    }
}

TEST_F(Context, MayStandAtAnyAddress)
{
    Change change(lldp);
    change.addAll(0);
    Bytes buffer(sizeof(NW_OPER_LOG_S) + 1);
    auto *unaligned = reinterpret_cast<NW_OPER_LOG_S *>(buffer.data() + 1);

    NW_OperateLogBuild(lldp, 0, 0, change.install().data(), unaligned);

    EXPECT_EQ(textOf(unaligned->szOperLog), sentenceOf(lldp, 0, fieldsOf(lldp, 0xFF)));
    EXPECT_EQ(buffer.back(), 6);
}

} // namespace
} // namespace operatelog

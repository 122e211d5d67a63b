// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include "lan_sending.hpp"

#include "lan_check.hpp"
#include "sentences.hpp"
#include "stored.hpp"
#include "wireless.hpp"

namespace nwctl {

namespace {

void requireNoConflict(const LanChange &change, const NW_IFC_STATE_DB_INFO_S &interfaces,
                       std::span<const GivenOption> given)
{
    const NW_RESULT result =
        checkSegments({&change, 1}, interfaces, readLanRecord(), bmc::manager::readWireless());
    if (result != NW_OK) {
        const GivenOption port{"PORT", portName(interfaces, change.port)};
        const GivenOption *option = optionAbout(result, given);
        const GivenOption &blamed = option != nullptr ? *option : port;
        throw Failure(Exit::refused, blamed.name, blamed.value,
                      "the change would make two networks overlap", result);
    }
}

NW_RESULT sendLan(const LanChange &change, NW_OPER_LOG_S &log)
{
    NW_LAN_BITMAP_S bitmap = bitmapOf({&change, 1});
    NW_LAN_SET_CFG_S config = configOf({&change, 1});
    return LIB_NW_SetLanConfig(&bitmap, &config, &log);
}

} // namespace

Sending lanSending(const std::string &port, LanChange change, const std::vector<GivenOption> &given,
                   SegmentCheck check)
{
    const NW_IFC_STATE_DB_INFO_S interfaces = readInterfaces();
    const NamedPort named = namedPort(interfaces, port);
    change.port = named.index;
    if (check == SegmentCheck::made) {
        requireNoConflict(change, interfaces, given);
    }

    Sending sending;
    sending.what = "LAN settings";
    sending.commands = {NW_CMD_SET_LAN};
    sending.module = NW_LOG_LAN;
    sending.port = named;
    sending.settings = given;
    sending.send = [change](NW_OPER_LOG_S &log) { return sendLan(change, log); };
    sending.sentences = lanSentences;
    sending.about = [given](NW_RESULT result) { return optionAbout(result, given); };
    return sending;
}

} // namespace nwctl

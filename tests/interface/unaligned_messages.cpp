// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// Messages, TLV records, the heartbeat and events.
#include "unaligned.hpp"

namespace unaligned {

namespace {

constexpr int project = 7;

// Any type that may be sent, and a text.
Bytes package()
{
    Bytes bytes = filled<NW_MSG_PACKAGE_S>();
    const long type = project;
    std::memcpy(bytes.data(), &type, sizeof(type));
    return bytes;
}

std::vector<Row> queueRows()
{
    const Bytes path = text("/some/file");
    return {
        row("NM_CreateMsg", +[](const char *file) { return NM_CreateMsg(file, project); }, {path}),
        row("NW_SendMsg",
            +[](const char *file, const NW_MSG_PACKAGE_S *message) {
                return NW_SendMsg(file, project, NW_MSG_TEXT_SIZE, message);
            },
            {path, package()}),
        row("NW_ReceiveMsg",
            +[](const char *file, NW_MSG_PACKAGE_S *message) {
                return NW_ReceiveMsg(file, project, NW_MSG_TEXT_SIZE, message);
            },
            {path, poisoned<NW_MSG_PACKAGE_S>()}),
        row("HeartbeatPostLogMsg",
            +[](const void *payload) { return HeartbeatPostLogMsg(payload, project); },
            {setters::pattern(NW_HEARTBEAT_PAYLOAD_SIZE)}),
        UNALIGNED_ROW(NW_CheckKezCapability, {Bytes{setters::poison}}),
        row("NW_FillTlv",
            +[](const void *value, std::uint32_t *total, std::uint8_t *area) {
                NW_FillTlv(11, 0x17, value, total, area);
            },
            {setters::pattern(11), Bytes{3, 0, 0, 0}, Bytes(NW_TLV_AREA_SIZE, setters::poison)}),
    };
}

std::vector<Row> eventRows()
{
    const Bytes none(sizeof(NW_NETWORK_EVENT_S));
    const Bytes all(sizeof(NW_NETWORK_EVENT_S), 0xFF);
    const Bytes allOfQueue(NW_EVENT_QUEUE_SIZE, 0xFF);
    return {
        row("NW_AddNetworkEvent",
            +[](NW_NETWORK_EVENT_S *holder) { NW_AddNetworkEvent(1, 777, holder); }, {none}),
        row(
            "NW_FindNetworkEvent",
            +[](const NW_NETWORK_EVENT_S *holder) { return NW_FindNetworkEvent(1, 777, holder); },
            {all}, 1),
        row("NW_AddNetworkEventByQ",
            +[](std::uint8_t *queue) { NW_AddNetworkEventByQ(queue, 777); },
            {Bytes(NW_EVENT_QUEUE_SIZE)}),
        row(
            "NW_FindNetworkEventByQ",
            +[](const std::uint8_t *queue) { return NW_FindNetworkEventByQ(queue, 777); },
            {allOfQueue}, 1),
        row(
            "NW_BackUpNetworkEvent",
            +[](NW_NETWORK_EVENT_S *holder) { NW_BackUpNetworkEvent(1, holder); },
            {filled<NW_NETWORK_EVENT_S>()}, 0, "Save"),
        row(
            "NW_BackUpNetworkEvent",
            +[](NW_NETWORK_EVENT_S *holder) { NW_BackUpNetworkEvent(0, holder); },
            {filled<NW_NETWORK_EVENT_S>()}, 0, "Restore"),
    };
}

} // namespace

std::vector<Row> messageRows()
{
    return joined({queueRows(), eventRows()});
}

} // namespace unaligned

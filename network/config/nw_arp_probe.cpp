// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The active search for a gateway's MAC address on a packet socket. */
#include "nw_arp_probe.h"

#include <arpa/inet.h>
#include <linux/if_arp.h>
#include <linux/if_ether.h>
#include <linux/if_packet.h>
#include <sys/select.h>
#include <unistd.h>

#include "network_mng/socket.h"
#include "nw_descriptor.h"

namespace {

constexpr uint32_t NW_ATTEMPTS = 2;
constexpr time_t NW_WAIT_SECONDS = 2;
constexpr size_t NW_PACKET_SIZE = 4096;

/* Where an Ethernet ARP packet keeps its sender. */
constexpr size_t NW_SENDER_MAC_OFFSET = 8;
constexpr size_t NW_SENDER_IP_OFFSET = 14;

constexpr size_t NW_HARDWARE_SIZE_MAX = sizeof(sockaddr_ll::sll_addr);

/* A bound socket, the address it has, and what is asked for. */
struct NW_PROBE_S {
    int iSocket;
    sockaddr_ll stBound;
    const uint8_t *pucAddr;
    const uint8_t *pucGateway;
};

sockaddr *NW_AsSockaddr(sockaddr_ll *pstAddr)
{
    return reinterpret_cast<sockaddr *>(pstAddr);
}

uint8_t *NW_Append(uint8_t *pucTo, const void *pFrom, size_t ulLength)
{
    memcpy(pucTo, pFrom, ulLength);
    return pucTo + ulLength;
}

/* Request frame, all in network order: the fixed head, then for the sender and the target a
 * hardware address of the interface's length and an IPv4 address. Answers its length. */
size_t NW_BuildRequest(const NW_PROBE_S &stProbe, size_t ulHardware, uint8_t *pucRequest)
{
    arphdr stHead{};
    stHead.ar_hrd = htons(ARPHRD_ETHER);
    stHead.ar_pro = htons(ETH_P_IP);
    stHead.ar_hln = static_cast<uint8_t>(ulHardware);
    stHead.ar_pln = NW_IPV4_SIZE;
    stHead.ar_op = htons(ARPOP_REQUEST);

    uint8_t *pucAt = NW_Append(pucRequest, &stHead, sizeof(stHead));
    pucAt = NW_Append(pucAt, stProbe.stBound.sll_addr, ulHardware);
    pucAt = NW_Append(pucAt, stProbe.pucAddr, NW_IPV4_SIZE);
    memset(pucAt, 0xFF, ulHardware);
    pucAt = NW_Append(pucAt + ulHardware, stProbe.pucGateway, NW_IPV4_SIZE);
    return static_cast<size_t>(pucAt - pucRequest);
}

bool NW_SendRequestFrame(const NW_PROBE_S &stProbe)
{
    const size_t ulHardware = stProbe.stBound.sll_halen < NW_HARDWARE_SIZE_MAX
                                  ? stProbe.stBound.sll_halen
                                  : NW_HARDWARE_SIZE_MAX;
    uint8_t aucRequest[sizeof(arphdr) + 2 * (NW_HARDWARE_SIZE_MAX + NW_IPV4_SIZE)]{};
    const size_t ulLength = NW_BuildRequest(stProbe, ulHardware, aucRequest);

    sockaddr_ll stBroadcast = stProbe.stBound;
    memset(stBroadcast.sll_addr, 0xFF, ulHardware);
    if (LIB_NW_Sendto(stProbe.iSocket, aucRequest, ulLength, 0, NW_AsSockaddr(&stBroadcast),
                      sizeof(stBroadcast)) < 0) {
        NW_DIAG(NW_DIAG_ERROR, "Send message failed.");
        return false;
    }
    return true;
}

enum class NW_WAIT_E { READY, NOT_OURS, FAILED };

NW_WAIT_E NW_WaitForPacket(int iSocket)
{
    int iReady = -1;
    fd_set stReadable;
    FD_ZERO(&stReadable);
    if (iSocket < FD_SETSIZE) { /* a higher descriptor has no place in the set */
        FD_SET(iSocket, &stReadable);
        timeval stTimeout{NW_WAIT_SECONDS, 0};
        iReady = select(iSocket + 1, &stReadable, nullptr, nullptr, &stTimeout);
    }

    if (iReady == -1) {
        NW_DIAG(NW_DIAG_ERROR, "Get gateway mac by arp select failed.");
        return NW_WAIT_E::FAILED;
    }
    if (iReady == 0) {
        NW_DIAG(NW_DIAG_ERROR, "Get gateway mac by arp select other failed");
        return NW_WAIT_E::FAILED;
    }
    return FD_ISSET(iSocket, &stReadable) ? NW_WAIT_E::READY : NW_WAIT_E::NOT_OURS;
}

/* Takes one packet; whatever ARP operation it is, its sender counts. */
bool NW_TakePacket(const NW_PROBE_S &stProbe, uint8_t *pucMacAddr)
{
    uint8_t aucPacket[NW_PACKET_SIZE]{};
    sockaddr_ll stSender{};
    socklen_t uiSenderLength = sizeof(stSender);

    if (LIB_NW_RecvFrom(stProbe.iSocket, aucPacket, sizeof(aucPacket), 0, NW_AsSockaddr(&stSender),
                        &uiSenderLength) < 0) {
        NW_DIAG(NW_DIAG_ERROR, "Failed in Recvfrom");
        return false;
    }
    if (memcmp(aucPacket + NW_SENDER_IP_OFFSET, stProbe.pucGateway, NW_IPV4_SIZE) != 0) {
        NW_DIAG(NW_DIAG_ERROR, "RecvPack no dstmac.");
        return false;
    }
    NW_DIAG(NW_DIAG_INFO, "RecvPack success.");
    memcpy(pucMacAddr, aucPacket + NW_SENDER_MAC_OFFSET, NW_MAC_SIZE);
    return true;
}

void NW_TryOnce(const NW_PROBE_S &stProbe, uint8_t *pucMacAddr)
{
    if (!NW_SendRequestFrame(stProbe)) {
        return;
    }

    const NW_WAIT_E eWait = NW_WaitForPacket(stProbe.iSocket);
    if (eWait == NW_WAIT_E::NOT_OURS) {
        return;
    }
    if (eWait == NW_WAIT_E::FAILED || !NW_TakePacket(stProbe, pucMacAddr)) {
        NW_DIAG(NW_DIAG_ERROR, "Recv message failed.");
    }
}

/* Binds the socket to ARP on the interface and reads back the interface's own hardware address.
 * Answers why that failed, null if it did not. */
const char *NW_BindToInterface(int iSocket, uint32_t uiIfIndex, sockaddr_ll *pstBound)
{
    *pstBound = {};
    pstBound->sll_family = AF_PACKET;
    pstBound->sll_protocol = htons(ETH_P_ARP);
    pstBound->sll_ifindex = static_cast<int>(uiIfIndex);
    if (LIB_NW_Bind(iSocket, NW_AsSockaddr(pstBound), sizeof(*pstBound)) != 0) {
        return "Failure in Binding";
    }

    socklen_t uiLength = sizeof(*pstBound);
    if (LIB_NW_GetSocketName(iSocket, NW_AsSockaddr(pstBound), &uiLength) != NW_OK) {
        return "Failure in getsockname";
    }
    return pstBound->sll_halen == 0 ? "Interface is not able to communicate" : nullptr;
}

} // namespace

void NW_ProbeGateway(uint32_t uiIfIndex, const NW_LAN_CFG_PORT_S &stPort, uint8_t *pucMacAddr)
{
    NW_DIAG(NW_DIAG_DEBUG, "Dropping To original socket method");
    NW_PROBE_S stProbe{
        socket(AF_PACKET, SOCK_DGRAM, 0), {}, stPort.aucIpv4Addr, stPort.aucIpv4Gateway};
    if (stProbe.iSocket < 0) {
        NW_DIAG(NW_DIAG_ERROR, "Open socket faild.");
        return;
    }

    NW_CloseOnExec(stProbe.iSocket);
    const char *pcFault = NW_BindToInterface(stProbe.iSocket, uiIfIndex, &stProbe.stBound);
    if (pcFault != nullptr) {
        close(stProbe.iSocket);
        NW_DIAG(NW_DIAG_ERROR, pcFault);
        return;
    }
    /* All attempts are made: a later answer replaces an earlier one. */
    for (uint32_t i = 0; i < NW_ATTEMPTS; ++i) {
        NW_TryOnce(stProbe, pucMacAddr);
    }
    close(stProbe.iSocket);
}

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Address states over a netlink route socket. */
#include "nw_lan_state.h"

#include <arpa/inet.h>
#include <linux/rtnetlink.h>
#include <sys/socket.h>
#include <unistd.h>

#include "nw_descriptor.h"

namespace {

constexpr size_t NW_DATAGRAM_SIZE = 8192;
constexpr size_t NW_KERNEL_TEXT_SIZE = 128;

struct NW_ADDR_DUMP_REQ_S {
    nlmsghdr stHeader;
    ifaddrmsg stAddr;
};
static_assert(sizeof(NW_ADDR_DUMP_REQ_S) == 24);

/* Where messages and attributes keep their parts. */
constexpr size_t NW_ADDR_MSG_OFFSET = sizeof(nlmsghdr);
constexpr size_t NW_ATTR_OFFSET = sizeof(NW_ADDR_DUMP_REQ_S);

constexpr size_t NW_RoundUp(size_t ulLength)
{
    return (ulLength + 3U) & ~size_t{3};
}

/* Loads a value of which only ulLength bytes may be read; the rest of it is zero. */
template <typename VALUE>
VALUE NW_LoadWithin(const uint8_t *pucFrom, size_t ulLength)
{
    VALUE value{};
    memcpy(&value, pucFrom, ulLength < sizeof(value) ? ulLength : sizeof(value));
    return value;
}

/* What the attributes of a message tell. The flags outlive the message: one without a flags
 * attribute inherits those of the message before it. */
struct NW_KERNEL_ADDR_S {
    uint32_t uiFlags;
    char szText[NW_KERNEL_TEXT_SIZE];
};

size_t NW_AddressSize(uint8_t ucFamily)
{
    return ucFamily == AF_INET6 ? NW_IPV6_SIZE : NW_IPV4_SIZE;
}

void NW_TakeAttribute(uint8_t ucFamily, uint32_t uiType, const uint8_t *pucValue, size_t ulLength,
                      NW_KERNEL_ADDR_S *pstKernel)
{
    switch (uiType) {
    case IFA_ADDRESS:
        if (ulLength >= NW_AddressSize(ucFamily)) {
            inet_ntop(ucFamily, pucValue, pstKernel->szText, sizeof(pstKernel->szText));
        }
        NW_DIAG(NW_DIAG_DEBUG, "addr ADDRESS info.");
        break;
    case IFA_FLAGS:
        if (ulLength >= sizeof(pstKernel->uiFlags)) {
            pstKernel->uiFlags = NW_Load<uint32_t>(pucValue);
        }
        NW_DIAG(NW_DIAG_DEBUG, "addr MULTICAST info."); /* says so, though it is the flags */
        break;
    default:
        NW_DIAG(NW_DIAG_DEBUG, "Received attr type is %d.", uiType);
        break;
    }
}

/* Attributes of a message of ulLength bytes. */
void NW_WalkAttributes(const uint8_t *pucMessage, size_t ulLength, uint8_t ucFamily,
                       NW_KERNEL_ADDR_S *pstKernel)
{
    size_t ulAt = NW_ATTR_OFFSET;

    while (ulAt + sizeof(rtattr) <= ulLength) {
        const auto stAttr = NW_Load<rtattr>(pucMessage + ulAt);
        if (stAttr.rta_len < sizeof(rtattr) || stAttr.rta_len > ulLength - ulAt) {
            return;
        }
        NW_TakeAttribute(ucFamily, stAttr.rta_type, pucMessage + ulAt + sizeof(rtattr),
                         stAttr.rta_len - sizeof(rtattr), pstKernel);
        ulAt += NW_RoundUp(stAttr.rta_len);
    }
}

NW_IPV6_ADDR_STATE_E NW_StateOf(uint32_t uiFlags)
{
    if ((uiFlags & IFA_F_DADFAILED) != 0) {
        return NW_IPV6_ADDR_DAD_FAILED;
    }
    return (uiFlags & IFA_F_TENTATIVE) != 0 ? NW_IPV6_ADDR_TENTATIVE : NW_IPV6_ADDR_VALID;
}

bool NW_IsSlotText(const NW_ETHER_INS_INFO_S &stView, uint32_t uiSlot, const char *pcText)
{
    return strncmp(stView.aszIpv6Addr[uiSlot], pcText, sizeof(stView.aszIpv6Addr[uiSlot])) == 0;
}

/* Marks the view's address that reads like the kernel's: link-local first, then the static one,
 * then the first of the further ones. */
void NW_MarkAddress(const char *pcText, NW_IPV6_ADDR_STATE_E eState, NW_ETHER_INS_INFO_S *pstView)
{
    if (NW_IsSlotText(*pstView, NW_IPV6_SLOT_LINK_LOCAL, pcText)) {
        NW_SetAddrState(pstView, NW_IPV6_STATE_LINK_LOCAL, eState);
        return;
    }
    if (NW_IsSlotText(*pstView, NW_IPV6_SLOT_STATIC, pcText)) {
        NW_SetAddrState(pstView, NW_IPV6_STATE_STATIC, eState);
        return;
    }
    for (uint32_t i = 0; i < NW_FurtherCount(*pstView); ++i) {
        if (NW_IsSlotText(*pstView, NW_IPV6_SLOT_FURTHER + i, pcText)) {
            NW_SetAddrState(pstView, NW_IPV6_STATE_FURTHER + i, eState);
            return;
        }
    }
}

/* One address message, of which ulLength bytes may be read; ulLeft is logged. */
void NW_TakeAddress(const uint8_t *pucMessage, size_t ulLength, size_t ulLeft, uint32_t uiIfIndex,
                    uint32_t *puiFlags, NW_ETHER_INS_INFO_S *pstView)
{
    const auto stAddr =
        NW_LoadWithin<ifaddrmsg>(pucMessage + NW_ADDR_MSG_OFFSET, ulLength - NW_ADDR_MSG_OFFSET);

    NW_DIAG(NW_DIAG_DEBUG, "addr flag is %x, index %x, len %x.", stAddr.ifa_flags, stAddr.ifa_index,
            stAddr.ifa_prefixlen);
    if (stAddr.ifa_index != uiIfIndex) {
        return;
    }

    NW_DIAG(NW_DIAG_DEBUG, "addr info*************************************.");
    NW_KERNEL_ADDR_S stKernel{*puiFlags, {}};
    NW_WalkAttributes(pucMessage, ulLength, stAddr.ifa_family, &stKernel);
    *puiFlags = stKernel.uiFlags;

    NW_MarkAddress(stKernel.szText, NW_StateOf(stKernel.uiFlags), pstView);
    NW_DIAG(NW_DIAG_DEBUG, "FLAG %x, addr %s.", stKernel.uiFlags, stKernel.szText);
    NW_DIAG(NW_DIAG_DEBUG, "left length is %d.", static_cast<int>(ulLeft));
}

/* Asks for the dump on an open socket and takes what one datagram holds. */
void NW_DumpAddresses(int iSocket, uint32_t uiIfIndex, NW_ETHER_INS_INFO_S *pstView)
{
    alignas(nlmsghdr) uint8_t aucBuffer[NW_DATAGRAM_SIZE]{};

    NW_ADDR_DUMP_REQ_S stRequest{};
    stRequest.stHeader.nlmsg_len = sizeof(stRequest);
    stRequest.stHeader.nlmsg_type = RTM_GETADDR;
    stRequest.stHeader.nlmsg_flags = NLM_F_REQUEST | NLM_F_ROOT | NLM_F_MATCH;
    stRequest.stAddr.ifa_family = AF_INET6;
    const ssize_t lSent = send(iSocket, &stRequest, sizeof(stRequest), 0);
    NW_DIAG(NW_DIAG_DEBUG, " network send get addr return is %d,need .", static_cast<int>(lSent));

    /* Where nothing was asked, nothing is waited for. */
    const int iFlags = lSent < 0 ? MSG_DONTWAIT : 0;
    const ssize_t lReceived = recv(iSocket, aucBuffer, sizeof(aucBuffer), iFlags);
    if (lReceived < 0) {
        NW_DIAG(NW_DIAG_CRITICAL, "Recv netlink route message failed.");
        return;
    }
    NW_DIAG(NW_DIAG_DEBUG, " network received addr return is %d,need .",
            static_cast<int>(lReceived));
    NW_WalkAddrDump(aucBuffer, static_cast<size_t>(lReceived), uiIfIndex, pstView);
}

} // namespace

void NW_SetAddrState(NW_ETHER_INS_INFO_S *pstView, uint32_t uiSlot, NW_IPV6_ADDR_STATE_E eState)
{
    pstView->astIpv6AddrState[uiSlot] = {static_cast<uint8_t>(eState), {}};
}

void NW_WalkAddrDump(const uint8_t *pucDatagram, size_t ulLength, uint32_t uiIfIndex,
                     NW_ETHER_INS_INFO_S *pstView)
{
    uint32_t uiFlags = 0;

    while (ulLength >= sizeof(nlmsghdr)) {
        const auto stHeader = NW_Load<nlmsghdr>(pucDatagram);
        if (stHeader.nlmsg_len < sizeof(nlmsghdr) || stHeader.nlmsg_len > ulLength) {
            return;
        }
        if (stHeader.nlmsg_type == NLMSG_ERROR) {
            NW_DIAG(NW_DIAG_DEBUG, "Receive data is unright.");
            return;
        }
        if (stHeader.nlmsg_type == NLMSG_DONE) {
            NW_DIAG(NW_DIAG_DEBUG, "Receive data is done.");
            return;
        }
        NW_TakeAddress(pucDatagram, stHeader.nlmsg_len, ulLength, uiIfIndex, &uiFlags, pstView);

        const size_t ulStep = NW_RoundUp(stHeader.nlmsg_len);
        if (ulStep >= ulLength) {
            return;
        }
        pucDatagram += ulStep;
        ulLength -= ulStep;
    }
}

/* Not inlined: its datagram buffer must not add to its caller's records. */
[[gnu::noinline]] void NW_QueryAddrStates(uint32_t uiIfIndex, NW_ETHER_INS_INFO_S *pstView)
{
    const int iSocket = socket(AF_NETLINK, SOCK_DGRAM, NETLINK_ROUTE);
    if (iSocket < 0) {
        NW_DIAG(NW_DIAG_CRITICAL, "Ceate netlink route socket failed.");
        return;
    }

    NW_CloseOnExec(iSocket);
    NW_DumpAddresses(iSocket, uiIfIndex, pstView);
    close(iSocket);
}

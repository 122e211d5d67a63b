// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The socket wrappers. */
#include "network_mng/socket.h"

#include "nw_frame.h"

/* The code does not fit a signed int; a caller that looks for -1 alone does not notice it. */
static constexpr int NW_SOCKET_NULL_POINTER = static_cast<int>(NW_ERR_NULL_POINTER);

int LIB_NW_Bind(int sockfd, const struct sockaddr *pstSockSrc, socklen_t addrlen)
{
    NW_CHECK_NULL(pstSockSrc, NW_SOCKET_NULL_POINTER);

    return bind(sockfd, pstSockSrc, addrlen);
}

int LIB_NW_Connect(int sockfd, const struct sockaddr *pstDst, socklen_t addrlen)
{
    NW_CHECK_NULL(pstDst, NW_SOCKET_NULL_POINTER);

    return connect(sockfd, pstDst, addrlen);
}

int LIB_NW_Send(int sockfd, const void *pcSendBuf, size_t ulLen, int iFlags)
{
    NW_CHECK_NULL(pcSendBuf, NW_SOCKET_NULL_POINTER);

    return static_cast<int>(send(sockfd, pcSendBuf, ulLen, iFlags));
}

int LIB_NW_Recv(int sockfd, void *pRecvbuf, size_t ulLen, int iFlags)
{
    NW_CHECK_NULL(pRecvbuf, NW_SOCKET_NULL_POINTER);

    return static_cast<int>(recv(sockfd, pRecvbuf, ulLen, iFlags));
}

int LIB_NW_Sendto(int sockfd, const void *pSendBuf, size_t ulLen, int iFlags,
                  const struct sockaddr *pstDst, socklen_t uiDstLen)
{
    NW_CHECK_NULL(pSendBuf, NW_SOCKET_NULL_POINTER);
    NW_CHECK_NULL(pstDst, NW_SOCKET_NULL_POINTER);

    return static_cast<int>(sendto(sockfd, pSendBuf, ulLen, iFlags, pstDst, uiDstLen));
}

int LIB_NW_RecvFrom(int sockfd, void *pRecvbuf, size_t ulLen, int iFlags, struct sockaddr *pstSrc,
                    socklen_t *puiSrcLen)
{
    NW_CHECK_NULL(pRecvbuf, NW_SOCKET_NULL_POINTER);
    NW_CHECK_NULL(pstSrc, NW_SOCKET_NULL_POINTER);
    NW_CHECK_NULL(puiSrcLen, NW_SOCKET_NULL_POINTER);

    return static_cast<int>(recvfrom(sockfd, pRecvbuf, ulLen, iFlags, pstSrc, puiSrcLen));
}

NW_RESULT LIB_NW_GetSocketName(int sockfd, struct sockaddr *pstSockSrc, socklen_t *addrlen)
{
    NW_CHECK_NULL(pstSockSrc, NW_ERR_NULL_POINTER);

    if (getsockname(sockfd, pstSockSrc, addrlen) == -1) {
        NW_DIAG(NW_DIAG_ERROR, "Failure in getsockname");
        return NW_ERR_GENERAL;
    }
    return NW_OK;
}

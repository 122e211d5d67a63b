// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Socket wrappers: a null-pointer check in front of the system call.
 *
 * Each answers what the system call answers (-1 with errno on failure), or NW_ERR_NULL_POINTER as a
 * signed number for a null pointer. Lengths are in bytes. */
#ifndef NETWORK_MNG_SOCKET_H
#define NETWORK_MNG_SOCKET_H

#include <sys/socket.h>

#include "base.h"

NW_EXTERN_C_BEGIN

/* bind, connect, send, recv, sendto and recvfrom. */
NW_EXPORT int LIB_NW_Bind(int sockfd, const struct sockaddr *pstSockSrc, socklen_t addrlen);
NW_EXPORT int LIB_NW_Connect(int sockfd, const struct sockaddr *pstDst, socklen_t addrlen);
NW_EXPORT int LIB_NW_Send(int sockfd, const void *pcSendBuf, size_t ulLen, int iFlags);
NW_EXPORT int LIB_NW_Recv(int sockfd, void *pRecvbuf, size_t ulLen, int iFlags);
NW_EXPORT int LIB_NW_Sendto(int sockfd, const void *pSendBuf, size_t ulLen, int iFlags,
                            const struct sockaddr *pstDst, socklen_t uiDstLen);
NW_EXPORT int LIB_NW_RecvFrom(int sockfd, void *pRecvbuf, size_t ulLen, int iFlags,
                              struct sockaddr *pstSrc, socklen_t *puiSrcLen);

/* Bound address of the socket. NW_ERR_GENERAL when the system call fails; only pstSockSrc is
 * checked. */
NW_EXPORT NW_RESULT LIB_NW_GetSocketName(int sockfd, struct sockaddr *pstSockSrc,
                                         socklen_t *addrlen);

NW_EXTERN_C_END

#endif

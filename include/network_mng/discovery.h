// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* What the network and the system's files tell: the gateway's MAC address, NTP servers, BMC name.
 */
#ifndef NETWORK_MNG_DISCOVERY_H
#define NETWORK_MNG_DISCOVERY_H

#include "base.h"

#define NW_BMC_NAME_FILE "/conf/network/hostname"
#define NW_BMC_NAME_SIZE 64U

NW_EXTERN_C_BEGIN

/* Files and sockets that these functions open are closed in programs that are started meanwhile.
 * The packet socket of the gateway search and the BMC name file are marked so right after they were
 * opened: a program that another thread starts in that moment inherits them. */

/* MAC address of a port's configured IPv4 gateway: from the kernel's ARP cache, otherwise by two
 * ARP requests (up to 4 seconds; needs the right to open packet sockets). Writes the 6 bytes when
 * it is found and reports nothing: the caller zeroes them first. About 7 KiB of stack. */
NW_EXPORT void NW_GetV4DefaultGwMacAddr(uint8_t ucPort, uint8_t *pucMacAddr);

/* NTP servers that the DHCP client recorded for the interface, as one line of text of at most
 * ulStrLen bytes with its terminator. ucIpFamily: 2 for IPv4, any other value for IPv6; ucPort: the
 * port whose addresses must come from DHCP. The answer is no result: the caller clears pcNTPStr
 * first and looks for a text in it. */
NW_EXPORT int LIB_NW_ParseNTPInfo(uint8_t ucIpFamily, const char *pcIfcName, uint8_t ucPort,
                                  uint32_t ulStrLen, char *pcNTPStr);

/* First line of the BMC name file, with its newline, into NW_BMC_NAME_SIZE bytes. */
NW_EXPORT NW_RESULT LIB_NW_ReadBmcNameFromFile(char *pcHostName);

/* Writes ulLen bytes over the start of the existing file, which is not shortened, and makes it
 * readable for all. */
NW_EXPORT NW_RESULT NW_WriteBmcNameToFile(const char *pcWriteBuf, uint32_t ulLen,
                                          const char *pcFileName);

NW_EXTERN_C_END

#endif

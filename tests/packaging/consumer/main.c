// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
#include <network_mng.h>
#include <stdio.h>

int main(void)
{
    uint8_t kind = NW_ADDR_KIND_INVALID;
    NW_RESULT result = LIB_CheckIpv4v6AndDomain("192.168.20.7", &kind);
    printf("result 0x%08X, kind %u\n", result, kind);
    result = LIB_CheckIpv4v6AndDomain("192.168.20.7", NULL);
    printf("result 0x%08X\n", result);
}

/* Requests that the setters send unchanged; the operation log prints their named fields. */
#ifndef NETWORK_MNG_SETTINGS_H
#define NETWORK_MNG_SETTINGS_H

#include "base.h"

/* Payload of NW_CMD_SET_LLDP. */
typedef struct NW_PACKED {
    uint32_t uiReserved; /* 0 */
    uint8_t ucSetMask;   /* bit 0 ucLldpEnable, bit 1 ucLldpWorkMode */
    uint8_t ucLldpEnable;
    uint8_t ucLldpWorkMode; /* bit 0 transmit, bit 1 receive */
    uint8_t ucPad;          /* 0 */
} NW_LLDP_SET_S;
NW_ASSERT_AT(NW_LLDP_SET_S, uiReserved, 0);
NW_ASSERT_AT(NW_LLDP_SET_S, ucSetMask, 4);
NW_ASSERT_AT(NW_LLDP_SET_S, ucLldpEnable, 5);
NW_ASSERT_AT(NW_LLDP_SET_S, ucLldpWorkMode, 6);
NW_ASSERT_AT(NW_LLDP_SET_S, ucPad, 7);
NW_ASSERT_SIZE(NW_LLDP_SET_S, 8);

/* Payload of NW_CMD_SET_NET_MODE. */
typedef struct NW_PACKED {
    uint32_t uiReserved;
    uint8_t ucSetMask; /* bit 0 ucNetMode */
    uint8_t ucNetMode; /* 0 separate ports, 1 bonded */
    uint8_t aucReserved6[2];
} NW_NET_MODE_SET_S;
NW_ASSERT_AT(NW_NET_MODE_SET_S, ucSetMask, 4);
NW_ASSERT_AT(NW_NET_MODE_SET_S, ucNetMode, 5);
NW_ASSERT_SIZE(NW_NET_MODE_SET_S, 8);

/* Payload of NW_CMD_SET_LAN_REVERSE. */
typedef struct NW_PACKED {
    uint8_t aucReserved0[4];
    uint8_t ucSetMask; /* bit 0 ucEnable */
    uint8_t ucEnable;
    uint8_t aucReserved6[2];
} NW_LAN_REVERSE_SET_S;
NW_ASSERT_AT(NW_LAN_REVERSE_SET_S, ucSetMask, 4);
NW_ASSERT_AT(NW_LAN_REVERSE_SET_S, ucEnable, 5);
NW_ASSERT_SIZE(NW_LAN_REVERSE_SET_S, 8);

/* Settings of one port in the payload of NW_CMD_SET_AN. */
typedef struct NW_PACKED {
    uint8_t ucAutoNeg;
    uint8_t ucDuplex; /* 0 half, any other value full */
    uint32_t uiSpeed;
} NW_AN_SET_PORT_S;
NW_ASSERT_AT(NW_AN_SET_PORT_S, ucAutoNeg, 0);
NW_ASSERT_AT(NW_AN_SET_PORT_S, ucDuplex, 1);
NW_ASSERT_AT(NW_AN_SET_PORT_S, uiSpeed, 2);
NW_ASSERT_SIZE(NW_AN_SET_PORT_S, 6);

/* Payload of NW_CMD_SET_AN: the caller's 8-byte bitmap and 16-byte configuration behind a zero. */
typedef struct NW_PACKED {
    uint32_t uiReserved;         /* 0 */
    uint32_t auiBitmap[2];       /* dedicated port, shared port */
    uint8_t aucConfigHead[4];    /* first bytes of the configuration, not printed */
    NW_AN_SET_PORT_S astPort[2]; /* dedicated port, shared port */
} NW_AN_SET_REQ_S;
NW_ASSERT_AT(NW_AN_SET_REQ_S, auiBitmap, 4);
NW_ASSERT_AT(NW_AN_SET_REQ_S, aucConfigHead, 12);
NW_ASSERT_AT(NW_AN_SET_REQ_S, astPort, 16);
NW_ASSERT_AT(NW_AN_SET_REQ_S, astPort[1], 22);
NW_ASSERT_SIZE(NW_AN_SET_REQ_S, 28);

#endif

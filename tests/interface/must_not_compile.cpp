// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* Compiles as it stands; each case breaks one promise that a static_assert holds. */
#include "network_mng.h"

typedef struct NW_PACKED {
    uint8_t ucFirst;
    uint32_t uiSecond;
} SAMPLE_S;
NW_ASSERT_AT(SAMPLE_S, ucFirst, 0);
NW_ASSERT_AT(SAMPLE_S, uiSecond, 1);
NW_ASSERT_SIZE(SAMPLE_S, 5);

#ifdef WRONG_SIZE
NW_ASSERT_SIZE(SAMPLE_S, 7);
#endif

#ifdef WRONG_OFFSET
NW_ASSERT_AT(SAMPLE_S, uiSecond, 4);
#endif

#ifdef PADDED_RECORD
typedef struct {
    uint8_t ucFirst;
    uint32_t uiSecond;
} PADDED_S;
NW_ASSERT_SIZE(PADDED_S, 5);
#endif

/* A table with a row too many or too few; what it was declared with stays. */
#ifdef SUCCESS_TABLE_RESIZED
#undef NW_OPERATE_LOG_SUCCESS_COUNT
#define NW_OPERATE_LOG_SUCCESS_COUNT 58U
#endif
#ifdef FAILURE_TABLE_RESIZED
#undef NW_OPERATE_LOG_FAILURE_COUNT
#define NW_OPERATE_LOG_FAILURE_COUNT 11U
#endif
#ifdef SUB_MODULE_TABLE_RESIZED
#undef NW_OPERATE_LOG_SUB_MODULE_COUNT
#define NW_OPERATE_LOG_SUB_MODULE_COUNT 7U
#endif

#include "nw_operate_log_tables.cpp"

#define TEXT_OF_16 "0123456789abcdef"
#define TEXT_OF_64 TEXT_OF_16 TEXT_OF_16 TEXT_OF_16 TEXT_OF_16

#ifdef TEXT_TOO_LONG
constexpr NW_OPERATE_LOG_DESC_S s_stRow = Row(1, 0, 1, nullptr, 0, TEXT_OF_64 TEXT_OF_64);
#endif

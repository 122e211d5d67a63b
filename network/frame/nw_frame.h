// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The frame of every exported function: diagnostics, null checks, byte access. */
#ifndef NW_FRAME_H
#define NW_FRAME_H

#include <string.h>

#include "bmc_platform.h"
#include "network_mng/base.h"

/* Where a line goes. The library uses exactly these shapes. */
enum NW_DIAG_SHAPE_E : uint8_t {
    NW_DIAG_ERROR,    /* ordinary failures */
    NW_DIAG_DEBUG,    /* verdicts in detail, progress */
    NW_DIAG_CRITICAL, /* sockets, pipes, chassis sends */
    NW_DIAG_INFO,
    NW_DIAG_IFC_FAIL,  /* interface-state and VLAN paths */
    NW_DIAG_IFC_TRACE, /* values on the VLAN path */
    NW_DIAG_NULL,      /* null pointers */
};

struct NW_DIAG_SHAPE_S {
    uint8_t ucModule;
    uint8_t ucCategory;
    uint8_t ucLevel;
};

inline constexpr NW_DIAG_SHAPE_S g_astDiagShape[] = {
    {10, 0, 4}, {10, 0, 7}, {10, 0, 2}, {10, 0, 6}, {10, 4, 2}, {10, 4, 6}, {0, 0, 7},
};

/* Source units, by whose names lines are told apart; the folder's build file sets NW_UNIT. */
enum NW_UNIT_E : uint8_t { libnetwork_mng, libnetwork_operatelog, libsocket_util };

inline constexpr const char *g_apcUnitName[] = {"libnetwork_mng", "libnetwork_operatelog",
                                                "libsocket_util"};

/* The source unit's name. */
#define NW_UNIT_NAME g_apcUnitName[NW_UNIT]

/* The one log call: NW_DIAG(shape, "text %d", value). Answers what the log answers. A line without
 * values, which most are, takes the short way. */
#define NW_DIAG(shape, ...)                                                                        \
    NW_DIAG_PICK(__VA_ARGS__, VALUES, VALUES, VALUES, VALUES, VALUES, VALUES, VALUES, TEXT, )      \
    (shape, __VA_ARGS__)
#define NW_DIAG_PICK(a1, a2, a3, a4, a5, a6, a7, a8, name, ...) NW_DIAG_##name
#define NW_DIAG_TEXT(shape, text) NW_LogText(shape, NW_UNIT, __LINE__, text)
#define NW_DIAG_VALUES(shape, ...)                                                                 \
    BMC_DiagLogOut(g_astDiagShape[shape].ucModule, g_astDiagShape[shape].ucCategory,               \
                   g_astDiagShape[shape].ucLevel, __LINE__, NW_UNIT_NAME, __VA_ARGS__)

int NW_LogText(NW_DIAG_SHAPE_E eShape, NW_UNIT_E eUnit, uint32_t uiLine, const char *pcText);

/* Logs that the pointer of this name is null: the name is part of the format. */
int NW_LogNullPointer(NW_UNIT_E eUnit, const char *pcPointer, const char *pcFunction,
                      uint32_t uiLine);

#define NW_DIAG_NULL_POINTER(pointer) NW_LogNullPointer(NW_UNIT, #pointer, __func__, __LINE__)

/* Returns from the calling function, with the value given if any, when the pointer is null; the
 * line logged names the pointer as it is written here. */
#define NW_CHECK_NULL(pointer, ...)                                                                \
    do {                                                                                           \
        if ((pointer) == nullptr) {                                                                \
            NW_DIAG_NULL_POINTER(pointer);                                                         \
            return __VA_ARGS__;                                                                    \
        }                                                                                          \
    } while (false)

/* Loads and stores a value that may stand at any address. */
template <typename VALUE>
inline VALUE NW_Load(const void *pFrom)
{
    VALUE value;
    memcpy(&value, pFrom, sizeof(value));
    return value;
}

template <typename VALUE>
inline void NW_Store(void *pTo, VALUE value)
{
    memcpy(pTo, &value, sizeof(value));
}

/* Elements of a table. */
template <typename ROW, size_t COUNT>
constexpr size_t NW_CountOf(const ROW (&)[COUNT])
{
    return COUNT;
}

#endif

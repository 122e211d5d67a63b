// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The frame of every exported function: diagnostics, null checks, byte access. */
#ifndef NW_FRAME_H
#define NW_FRAME_H

#include <string.h>

#include "bmc_platform.h"
#include "network_mng/base.h"

/* What a line is. The library uses exactly these shapes; their numbers stand in nw_diag.cpp. */
enum NW_DIAG_SHAPE_E : uint8_t {
    NW_DIAG_ERROR,    /* ordinary failures */
    NW_DIAG_DEBUG,    /* verdicts in detail, progress */
    NW_DIAG_CRITICAL, /* sockets, pipes, chassis sends */
    NW_DIAG_INFO,
    NW_DIAG_IFC_FAIL,  /* interface-state and VLAN paths */
    NW_DIAG_IFC_TRACE, /* values on the VLAN path */
    NW_DIAG_NULL,      /* null pointers */
};

/* Source units, by whose names lines are told apart; the folder's build file sets NW_UNIT. */
enum NW_UNIT_E : uint8_t { libnetwork_mng, libnetwork_operatelog, libsocket_util };

inline constexpr const char *g_apcUnitName[] = {"libnetwork_mng", "libnetwork_operatelog",
                                                "libsocket_util"};

/* The source unit's name. */
#define NW_UNIT_NAME g_apcUnitName[NW_UNIT]

/* Where a line comes from and what it is, in one word: lines are many, and a word costs each of
 * them one instruction. From the least bit: 3 of the shape, 2 of the unit, the source line. */
using NW_PLACE = uint32_t;

constexpr NW_PLACE NW_Place(NW_DIAG_SHAPE_E eShape, NW_UNIT_E eUnit, uint32_t uiLine)
{
    return uiLine << 5U | static_cast<uint32_t>(eUnit) << 3U | eShape;
}
constexpr uint32_t NW_ShapeOf(NW_PLACE uiPlace)
{
    return uiPlace & 7U;
}
constexpr const char *NW_UnitOf(NW_PLACE uiPlace)
{
    return g_apcUnitName[uiPlace >> 3U & 3U];
}
constexpr uint32_t NW_LineOf(NW_PLACE uiPlace)
{
    return uiPlace >> 5U;
}

/* A line's values are numbers and texts; of each there is one type, so that lines share a call. */
constexpr uint32_t NW_LoggedValue(uint32_t uiValue)
{
    return uiValue;
}
constexpr uint32_t NW_LoggedValue(int iValue)
{
    return static_cast<uint32_t>(iValue);
}
constexpr long NW_LoggedValue(long lValue)
{
    return lValue;
}
constexpr const char *NW_LoggedValue(const char *pcValue)
{
    return pcValue;
}

/* Stands in nw_diag.cpp, for the kinds of lines that there are; a new kind is a line there. */
template <typename... VALUES>
int NW_LogValues(NW_PLACE uiPlace, const char *pcFormat, VALUES... values);

template <typename... VALUES>
[[gnu::always_inline]] inline int NW_Log(NW_PLACE uiPlace, const char *pcFormat, VALUES... values)
{
    return NW_LogValues(uiPlace, pcFormat, NW_LoggedValue(values)...);
}

/* The one log call: NW_DIAG(shape, "text %d", value). Answers what the log answers. The call that
 * is never made has the compiler compare the text with its values. */
#define NW_DIAG(shape, ...)                                                                        \
    (false ? BMC_DiagLogOut(0, 0, 0, 0, "", __VA_ARGS__)                                           \
           : NW_Log(NW_Place(shape, NW_UNIT, __LINE__), __VA_ARGS__))

/* Logs that the pointer of this name is null: the name is part of the format. */
int NW_LogNullPointer(NW_PLACE uiPlace, const char *pcPointer, const char *pcFunction);

#define NW_DIAG_NULL_POINTER(pointer)                                                              \
    NW_LogNullPointer(NW_Place(NW_DIAG_NULL, NW_UNIT, __LINE__), #pointer, __func__)

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

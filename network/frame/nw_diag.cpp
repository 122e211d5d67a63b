// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The way of every line to the platform's log. */
#include "nw_frame.h"

static constexpr size_t NW_NULL_FORMAT_SIZE = 96;

/* What the platform's log is told before the text. */
struct NW_LINE_HEAD_S {
    uint32_t uiModule;
    uint32_t uiCategory;
    uint32_t uiLevel;
    uint32_t uiLine;
    const char *pcUnit;
};

/* Not inlined: one for all kinds of lines. */
[[gnu::noinline]] static NW_LINE_HEAD_S NW_HeadOf(NW_PLACE uiPlace)
{
    struct NW_SHAPE_S {
        uint8_t ucModule;
        uint8_t ucCategory;
        uint8_t ucLevel;
    };
    static constexpr NW_SHAPE_S s_astShape[] = {
        {10, 0, 4}, /* NW_DIAG_ERROR */
        {10, 0, 7}, /* NW_DIAG_DEBUG */
        {10, 0, 2}, /* NW_DIAG_CRITICAL */
        {10, 0, 6}, /* NW_DIAG_INFO */
        {10, 4, 2}, /* NW_DIAG_IFC_FAIL */
        {10, 4, 6}, /* NW_DIAG_IFC_TRACE */
        {0, 0, 7},  /* NW_DIAG_NULL */
    };
    static_assert(NW_CountOf(s_astShape) == NW_DIAG_NULL + 1);
    const NW_SHAPE_S &stShape = s_astShape[NW_ShapeOf(uiPlace)];

    return {stShape.ucModule, stShape.ucCategory, stShape.ucLevel, NW_LineOf(uiPlace),
            NW_UnitOf(uiPlace)};
}

template <typename... VALUES>
int NW_LogValues(NW_PLACE uiPlace, const char *pcFormat, VALUES... values)
{
    const NW_LINE_HEAD_S stHead = NW_HeadOf(uiPlace);

    return BMC_DiagLogOut(stHead.uiModule, stHead.uiCategory, stHead.uiLevel, stHead.uiLine,
                          stHead.pcUnit, pcFormat, values...);
}

/* The kinds of lines, by their values: N a number, T a text. */
#define N uint32_t
#define T const char *
template int NW_LogValues(NW_PLACE, const char *);
template int NW_LogValues(NW_PLACE, const char *, long);
template int NW_LogValues(NW_PLACE, const char *, N);
template int NW_LogValues(NW_PLACE, const char *, N, N);
template int NW_LogValues(NW_PLACE, const char *, N, N, N);
template int NW_LogValues(NW_PLACE, const char *, N, T);
template int NW_LogValues(NW_PLACE, const char *, T);
template int NW_LogValues(NW_PLACE, const char *, T, N);
template int NW_LogValues(NW_PLACE, const char *, T, N, T);
template int NW_LogValues(NW_PLACE, const char *, T, T);
template int NW_LogValues(NW_PLACE, const char *, T, T, N);

int NW_LogNullPointer(NW_PLACE uiPlace, const char *pcPointer, const char *pcFunction)
{
    char szFormat[NW_NULL_FORMAT_SIZE];
    BMC_Scnprintf(szFormat, sizeof(szFormat), "Pointer %s is Null, File:%%s Func:%%s Line:%%d",
                  pcPointer);

    return NW_LogValues(uiPlace, szFormat, NW_UnitOf(uiPlace), pcFunction, NW_LineOf(uiPlace));
}

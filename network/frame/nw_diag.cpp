// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
/* The lines that need no values of their caller's. */
#include "nw_frame.h"

static constexpr size_t NW_NULL_FORMAT_SIZE = 96;

int NW_LogText(NW_DIAG_SHAPE_E eShape, NW_UNIT_E eUnit, uint32_t uiLine, const char *pcText)
{
    const NW_DIAG_SHAPE_S &stShape = g_astDiagShape[eShape];

    return BMC_DiagLogOut(stShape.ucModule, stShape.ucCategory, stShape.ucLevel, uiLine,
                          g_apcUnitName[eUnit], pcText);
}

int NW_LogNullPointer(NW_UNIT_E eUnit, const char *pcPointer, const char *pcFunction,
                      uint32_t uiLine)
{
    char szFormat[NW_NULL_FORMAT_SIZE];
    BMC_Scnprintf(szFormat, sizeof(szFormat), "Pointer %s is Null, File:%%s Func:%%s Line:%%d",
                  pcPointer);

    const NW_DIAG_SHAPE_S &stShape = g_astDiagShape[NW_DIAG_NULL];
    const char *pcUnit = g_apcUnitName[eUnit];
    return BMC_DiagLogOut(stShape.ucModule, stShape.ucCategory, stShape.ucLevel, uiLine, pcUnit,
                          szFormat, pcUnit, pcFunction, uiLine);
}

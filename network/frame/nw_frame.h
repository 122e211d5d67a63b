/* The frame of every exported function: diagnostics, null checks, byte access.
 *
 * NW_UNIT_NAME, the source unit's name in the diagnostics, comes from the folder's build file. */
#ifndef NW_FRAME_H
#define NW_FRAME_H

#include <string.h>

#include "bmc_platform.h"
#include "network_mng/base.h"

/* Where a line goes. The library uses exactly these shapes. */
struct NW_DIAG_SHAPE_S {
    uint32_t uiModule;
    uint32_t uiCategory;
    uint32_t uiLevel;
};

inline constexpr NW_DIAG_SHAPE_S NW_DIAG_ERROR{10, 0, 4};    /* ordinary failures */
inline constexpr NW_DIAG_SHAPE_S NW_DIAG_DEBUG{10, 0, 7};    /* verdicts in detail, progress */
inline constexpr NW_DIAG_SHAPE_S NW_DIAG_CRITICAL{10, 0, 2}; /* sockets, pipes, chassis sends */
inline constexpr NW_DIAG_SHAPE_S NW_DIAG_INFO{10, 0, 6};
inline constexpr NW_DIAG_SHAPE_S NW_DIAG_IFC_FAIL{10, 4, 2};  /* interface-state and VLAN paths */
inline constexpr NW_DIAG_SHAPE_S NW_DIAG_IFC_TRACE{10, 4, 6}; /* values on the VLAN path */
inline constexpr NW_DIAG_SHAPE_S NW_DIAG_NULL{0, 0, 7};

/* The one log call: NW_DIAG(shape, "text %d", value). Answers what the log answers. */
#define NW_DIAG(shape, ...)                                                                        \
    BMC_DiagLogOut((shape).uiModule, (shape).uiCategory, (shape).uiLevel, __LINE__, NW_UNIT_NAME,  \
                   __VA_ARGS__)

#define NW_DIAG_NULL_POINTER(pointer)                                                              \
    NW_DIAG(NW_DIAG_NULL, "Pointer " #pointer " is Null, File:%s Func:%s Line:%d", NW_UNIT_NAME,   \
            __func__, __LINE__)

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

// SPDX-FileCopyrightText: 2026 The libnetwork_mng developers
// SPDX-License-Identifier: Apache-2.0
// A program of tests.
#include "rows.hpp"

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    support::registerRows();
    return RUN_ALL_TESTS();
}

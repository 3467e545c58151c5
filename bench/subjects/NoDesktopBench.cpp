// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Stands in for DesktopBench.cpp where the X library is not installed.

#include "instruments/Table.h"
#include "subjects/Benches.h"

void benchDesktop(Table &table) {
    table.gap("start-up to first frame", "Okteta, GHex", "built without libxcb1-dev");
}

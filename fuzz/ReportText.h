// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/ToolReport.h"

/// Everything that \a report says, to compare two of them.
QString textOf(const ToolReport &report);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringView>

// What the parts of a chip are that the tool names, in letters of either case.

/// The code memory, by its own name.
bool isCodeMemory(QStringView name);
/// The data memory.
bool isDataPart(QStringView name);
/// The user memory.
bool isUserPart(QStringView name);
/// The fuses, by whichever of their names.
bool isFusePart(QStringView name);
/// The code memory, or another part that may hold code: any that is not known for something else.
bool isCodePart(QStringView name);

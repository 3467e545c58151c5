// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

/// Bytes of the heap that are in use, those in mappings of their own included.
double heapInUse();

/// The memory that process \a pid has in use, its shared libraries included, in bytes. (A
/// proportional share would count only half of what this very program has loaded too.) Throws if it
/// cannot be told.
double memoryOfProcess(int pid);

/// Takes \a bytes of memory, touches them and gives them back: under a virtual machine what was not
/// touched lately is to be had from its host first, which takes ten times as long as filling it.
void touchMemory(qint64 bytes);

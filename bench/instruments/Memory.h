// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

/// Bytes of the heap that are in use, those in mappings of their own included.
double heapInUse();

/// The memory that process \a pid has in use, its shared libraries included, in bytes. (A
/// proportional share would count only half of what this very program has loaded too.) Throws if it
/// cannot be told.
double memoryOfProcess(int pid);

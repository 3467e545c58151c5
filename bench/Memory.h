#pragma once

/// Bytes of the heap that are in use, those in mappings of their own included.
double heapInUse();

/// The proportional share of the memory of process \a pid, in bytes. Throws if it cannot be told.
double memoryOfProcess(int pid);

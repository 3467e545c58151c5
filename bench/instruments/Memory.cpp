// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Memory.h"

#include "base/HugePages.h"

#include <cstring>
#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <string>

double heapInUse() {
    const auto info = mallinfo2();
    return double(info.uordblks) + double(info.hblkhd);
}

double memoryOfProcess(int pid) {
    std::ifstream facts("/proc/" + std::to_string(pid) + "/smaps_rollup");
    for (std::string word; facts >> word;)
        if (double kibibytes = 0; word == "Rss:" && facts >> kibibytes)
            return kibibytes * 1024;
    throw std::runtime_error("the system does not tell a process's memory");
}

void touchMemory(qint64 bytes) {
    QByteArray memory = uninitializedBytes(bytes);
    std::memset(memory.data(), 1, size_t(bytes));
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/HeldDisk.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace {

std::mutex diskMutex; // guards what follows
std::condition_variable diskIsFree;
bool diskIsWatched = false;
bool diskIsHeld = false;
int callsToDisk = 0;
int errorOfDisk = 0;

} // namespace

int answerOfHeldDisk() {
    std::unique_lock lock(diskMutex);
    if (!diskIsWatched)
        return 0;
    ++callsToDisk;
    if (!diskIsHeld)
        return 0;
    diskIsFree.wait(lock, [] { return !diskIsHeld; });
    return errorOfDisk;
}

HeldDisk::HeldDisk() {
    const std::lock_guard lock(diskMutex);
    diskIsWatched = true;
    diskIsHeld = true;
    callsToDisk = 0;
    errorOfDisk = 0;
}

HeldDisk::~HeldDisk() {
    release();
    const std::lock_guard lock(diskMutex);
    diskIsWatched = false;
}

int HeldDisk::calls() const {
    const std::lock_guard lock(diskMutex);
    return callsToDisk;
}

void HeldDisk::release(int error) {
    {
        const std::lock_guard lock(diskMutex);
        if (std::exchange(diskIsHeld, false))
            errorOfDisk = error;
    }
    diskIsFree.notify_all();
}

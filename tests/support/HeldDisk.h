// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

/// A disk that takes nothing until it is released: whoever asks it to write what it was given
/// (fsync(), fdatasync()) waits. One at a time. Link failing_calls to the test.
class HeldDisk {
public:
    HeldDisk();
    /// Releases it.
    ~HeldDisk();
    HeldDisk(const HeldDisk &) = delete;
    HeldDisk &operator=(const HeldDisk &) = delete;

    /// How often it was asked so far.
    int calls() const;
    /// Lets those who wait go on: their calls fail with \a error, unless it is 0. Those that follow
    /// do not wait.
    void release(int error = 0);
};

/// What a call that asks the disk has to do first: waits while there is a held disk, and gives the
/// error to fail with; 0 for none.
int answerOfHeldDisk();

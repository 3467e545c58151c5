// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <functional>
#include <utility>

/// Asked before anything in the folder of temporary files is changed: whether that is this
/// program's, and if not, why.
class FolderGuard {
public:
    /// The guard of a folder that can be nobody else's.
    FolderGuard() = default;
    FolderGuard(std::function<Result<void>()> answer) : answer_(std::move(answer)) {}

    /// The answer of this moment: the settings may come to name another folder.
    Result<void> operator()() const { return answer_ ? answer_() : Result<void>(); }

private:
    std::function<Result<void>()> answer_;
};

/// The failure to use a folder that another window has.
Failure folderOfAnotherWindow();
/// True if \a failure is that.
bool isOfAnotherWindow(const Failure &failure);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <functional>
#include <utility>

/// Why the folder of temporary files may not be used.
struct FolderTrouble {
    Failure failure;
    bool isAnotherWindows = false; ///< it is another window's
};

/// The trouble with a folder that another window has.
FolderTrouble folderOfAnotherWindow();

/// Asked before anything in the folder of temporary files is changed: whether that is this
/// program's, and if not, why.
class FolderGuard {
public:
    using Answer = Result<void, FolderTrouble>;

    /// The guard of a folder that can be nobody else's.
    FolderGuard() = default;
    FolderGuard(std::function<Answer()> answer) : answer_(std::move(answer)) {}

    /// The answer of this moment: the settings may come to name another folder.
    Result<void> operator()() const;
    /// True if it is another window's at this moment.
    bool isAnotherWindows() const;

private:
    std::function<Answer()> answer_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FolderGuard.h"

#include <QCoreApplication>

FolderTrouble folderOfAnotherWindow() {
    return {{QCoreApplication::translate("FolderGuard", "Another window works with this folder")},
            true};
}

Result<void> FolderGuard::operator()() const {
    const Answer answer = answer_ ? answer_() : Answer();
    if (const FolderTrouble *trouble = answer.failure())
        return trouble->failure;
    return {};
}

bool FolderGuard::isAnotherWindows() const {
    const Answer answer = answer_ ? answer_() : Answer();
    return !answer && answer.failure()->isAnotherWindows;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FolderGuard.h"

#include <QCoreApplication>

#include <cerrno>

Failure folderOfAnotherWindow() {
    return Failure{
        QCoreApplication::translate("FolderGuard", "Another window works with this folder"), EBUSY};
}

bool isOfAnotherWindow(const Failure &failure) {
    return failure.systemError == EBUSY;
}

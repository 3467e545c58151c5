// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FolderGuard.h"

#include <QCoreApplication>

Failure folderOfAnotherWindow() {
    return Failure{
        QCoreApplication::translate("FolderGuard", "Another window works with this folder")};
}

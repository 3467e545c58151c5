// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/PrivateFolder.h"

#include <QFile>

#include <filesystem>
#include <system_error>

#include <sys/stat.h>

Result<void> makePrivateFolder(const QString &path) {
    constexpr mode_t allButTheOwner = 077;
    const mode_t mask = ::umask(allButTheOwner);
    std::error_code error;
    std::filesystem::create_directories(QFile::encodeName(path).toStdString(), error);
    ::umask(mask);
    if (error)
        return Failure::ofSystem(error.value());
    return {};
}

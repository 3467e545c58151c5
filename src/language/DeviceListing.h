// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "base/Units.h"

#include <QStringList>
#include <QStringView>

/// The largest list of devices that is read, in bytes. The tool's whole catalogue has half a
/// million.
inline constexpr qint64 largestList = 8 * mebibyte;
/// The most lines of a list of devices that is read; the whole catalogue has some 32,000. What has
/// more takes too long to be made into names and shown.
inline constexpr qsizetype maxListLines = qsizetype(1) << 18;

/// What the tool lists in a search.
struct DeviceListing {
    qsizetype lines = 0; ///< the empty ones, too
    QStringList names;
    bool looksCut = false; ///< it is empty, or its last line has no end
};

/// The devices that \a text lists, one a line; a failure (E2BIG) beyond maxListLines lines.
Result<DeviceListing> readDeviceListing(QStringView text);

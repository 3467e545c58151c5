// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "language/ToolReport.h"

#include <QStringView>

#include <optional>

// The sentences of the programmer tool, each for one line without escape sequences and without
// blanks at its ends. Nothing where the line holds no such sentence.

/// The cause of a failure that \a line names.
std::optional<ToolError> toolErrorIn(QStringView line);

/// The chip ID that the tool was told to put up with.
std::optional<toolErrors::WrongChipId> ignoredIdIn(QStringView line);

/// The size of the file that the tool was told to put up with.
std::optional<toolErrors::WrongSize> ignoredSizeIn(QStringView line);

/// The folder in which the tool did not find a file of its list of devices; empty for the one
/// that it runs in.
std::optional<QString> databasePlaceIn(QStringView line);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Whether \a header, as an include names it, belongs to the toolkit's module \a module:
/// "QLabel" and "QtWidgets/QLabel" to "QtWidgets". The installed headers tell.
bool isOfModule(const QString &header, const QString &module);

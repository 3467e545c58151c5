// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QItemSelection>
#include <QString>

class GridModel;

/// The rows of \a selection as lines of text in the order of the rows: address, bytes and
/// characters side by side, or the fields of a logic test separated by tabs. Control characters
/// become spaces, so that a row stays one line.
QString gridText(const GridModel &model, const QItemSelection &selection);

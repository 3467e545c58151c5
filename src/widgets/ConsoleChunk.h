// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <variant>

/// A stretch of the console's text, with a byte for each UTF-16 unit where that is enough.
class ConsoleChunk {
public:
    explicit ConsoleChunk(const QString &text) : text_(text) {}

    /// In UTF-16 units.
    qsizetype size() const;
    /// Appends \a text; not after pack().
    void append(const QString &text);
    /// Halves what it takes, if no character is above U+00FF. Nothing is appended any more.
    void pack();
    /// Appends \a count units to \a text, beginning with the unit \a from; there must be so many.
    void copyTo(QString &text, qsizetype from, qsizetype count) const;
    /// Forgets the first \a count units, of which there must be so many.
    void removeFirst(qsizetype count);

private:
    std::variant<QString, QByteArray> text_; ///< the latter in Latin-1
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"

#include <QString>

/// The end of what a run has printed, whatever the length of the whole.
class OutputTail {
public:
    /// The most characters that text() gives: 64 KiB of memory.
    static constexpr qsizetype largest = 64 * kibibyte / qsizetype(sizeof(QChar));

    /// \a piece has been printed.
    void append(QStringView piece);
    /// The last characters, with memory of their own; half a character at the beginning is left
    /// out.
    QString text() const;
    /// How many characters have been printed in all.
    qint64 printed() const { return printed_; }
    /// Gives the memory back: from here on what is printed is only counted.
    void release();

private:
    QString kept_;
    qint64 printed_ = 0;
    bool isReleased_ = false;
};

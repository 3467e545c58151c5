// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// What stands out about a byte besides its value.
struct ByteMark {
    /// The other image has another byte there: bold, in a colour of its own.
    bool differs = false;
    /// It is part of what was searched for: on a ground of its own, underlined.
    bool found = false;
    /// It was edited since the image was composed: bold, in the colour that it has otherwise.
    bool edited = false;

    friend bool operator==(const ByteMark &, const ByteMark &) = default;
};

/// Tells which bytes of a grid stand out. It is asked for every cell that is drawn, so it answers
/// at once.
class GridMarks {
public:
    GridMarks() = default;
    GridMarks(const GridMarks &) = delete;
    GridMarks &operator=(const GridMarks &) = delete;
    virtual ~GridMarks() = default;

    /// The mark of the byte at \a offset, which need not exist.
    virtual ByteMark markAt(qint64 offset) const = 0;
    /// The same in words, as a tool tip and for people who cannot see the mark; empty if the byte
    /// does not stand out.
    virtual QString wordsAt(qint64 offset) const = 0;
};

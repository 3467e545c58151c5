// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "widgets/ConsoleChunk.h"

#include <QString>

#include <deque>

/// The text of the console, exactly as it came and in order: control sequences, carriage returns
/// and all. It holds at most limit() UTF-16 units (for plain ASCII, as many bytes as were
/// printed); beyond that the oldest text goes, up to the next line break if one is near.
class ConsoleStorage {
public:
    /// 16 Mi UTF-16 units: 16 MiB of ASCII output, which take as much memory. Text with characters
    /// above U+00FF takes twice that.
    static constexpr qsizetype defaultLimit = qsizetype(16) << 20;
    /// How far behind the limit a line break still counts as near, in UTF-16 units.
    static constexpr qsizetype nearestBreak = 4096;

    /// An empty storage of at most \a limit UTF-16 units.
    explicit ConsoleStorage(qsizetype limit = defaultLimit) : limit_(limit) {}

    /// Appends \a piece. True if this append was the first to drop old text since the storage was
    /// created or cleared.
    bool append(const QString &piece);
    /// Forgets all text and that any was dropped.
    void clear();

    /// The whole text.
    QString text() const;
    /// Its length in UTF-16 units.
    qsizetype length() const { return length_; }
    /// The most UTF-16 units that are kept.
    qsizetype limit() const { return limit_; }

private:
    void beginChunk(const QString &piece);
    void trim();
    void dropFront(qsizetype count);
    QString start(qsizetype count) const;
    static qsizetype unitsToGoodStart(const QString &text);

    qsizetype limit_;
    qsizetype length_ = 0;
    qsizetype skipped_ = 0; ///< units of the first chunk that are gone
    bool trimmed_ = false;
    std::deque<ConsoleChunk> chunks_; ///< pack() was called for all but the last
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

#include <array>
#include <cstddef>
#include <vector>

/// What is wrong with a line of records.
enum class TroubleKind {
    BadChecksum,    ///< the checksum does not fit the record
    Overlap,        ///< a record has bytes where an earlier one had some; the later one's count
    CountDisagrees, ///< a record that counts the others counts otherwise
    MissingEnd,     ///< there is no end record; the line is the last
    DataBehindEnd,  ///< something stands behind the end record; it was not read
    NoRecord,       ///< the line does not begin as a record does, or is far too long for one
    NoHexDigit,     ///< a character that is no hexadecimal digit
    OddDigit,       ///< half a byte
    BadCount,       ///< more or fewer bytes than the record says, or than its type has
    UnknownType,    ///< a type that the format does not have
    Past4GiB,       ///< bytes beyond the last address of 32 bits
    TooManyPieces   ///< more separate pieces than are kept; nothing behind the line was read
};

inline constexpr std::size_t troubleKinds = std::size_t(TroubleKind::TooManyPieces) + 1;

/// True if a record was left out for it: its bytes cannot be had.
constexpr bool losesBytes(TroubleKind kind) {
    return kind >= TroubleKind::NoRecord;
}

struct RecordTrouble {
    TroubleKind kind = TroubleKind::BadChecksum;
    qint64 line = 0; ///< the first line is 1

    friend bool operator==(const RecordTrouble &, const RecordTrouble &) = default;
};

/// The troubles of a text: all of them counted, the first ones kept.
class RecordTroubles {
public:
    /// How many are kept to be shown: more than anybody reads before looking at the text itself.
    static constexpr std::size_t maxKept = 100;

    void add(TroubleKind kind, qint64 line) {
        ++counts_[std::size_t(kind)];
        if (kept_.size() < maxKept)
            kept_.push_back({kind, line});
    }

    /// The first ones, by line.
    const std::vector<RecordTrouble> &kept() const { return kept_; }
    qint64 count(TroubleKind kind) const { return counts_[std::size_t(kind)]; }
    qint64 total() const {
        qint64 sum = 0;
        for (const qint64 count : counts_)
            sum += count;
        return sum;
    }
    bool isEmpty() const { return kept_.empty(); }
    /// True if records were left out.
    bool loseBytes() const {
        for (std::size_t kind = 0; kind < troubleKinds; ++kind)
            if (counts_[kind] > 0 && losesBytes(TroubleKind(kind)))
                return true;
        return false;
    }

private:
    std::array<qint64, troubleKinds> counts_{};
    std::vector<RecordTrouble> kept_;
};

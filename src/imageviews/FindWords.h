// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "inspect/BytePattern.h"

#include <QString>

#include <optional>

/// How a search stands.
struct FindState {
    enum class Where {
        Nowhere, ///< nothing is searched for
        Results, ///< the results of a logic test are shown
        NoBytes, ///< the image that is shown is empty
        Image,
    };
    /// Whether the last step went on from the other end.
    enum class Wrap { None, FromBeginning, FromEnd };

    Where where = Where::Nowhere;
    std::optional<qint64> hits; ///< how many there are, once they are counted
    qint64 number = 0;          ///< which of them is at the cursor, from 1 on; 0 if none is
    Wrap wrap = Wrap::None;
};

// What the find bar says, in pieces. Each is translated, and empty where there is nothing to say.

/// How many hits there are, or which of them is at the cursor.
QString countWords(const FindState &state);
/// What else is to be said of a search.
QString remarkWords(const FindState &state);
/// Why a text cannot be searched for.
QString troubleWords(const PatternTrouble &trouble);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QString>

#include <optional>

/// Tells the second press for one thing from the first. It counts for the very same thing alone,
/// and only when it can no longer be the second half of a double-click.
class RepeatedPress {
public:
    /// Who presses: a hand may double-click, a program does not.
    enum class Presser { Hand, Program };

    /// True if the press is the second one for \a thing, and the next a first one again. False if
    /// the user has to be asked, or was just now.
    bool confirms(const QString &thing, Presser presser = Presser::Hand);
    /// The next press is a first one.
    void forget() { asked_.reset(); }

private:
    std::optional<QString> asked_;
    QElapsedTimer sinceAsked_;
};

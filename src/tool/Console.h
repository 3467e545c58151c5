// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// What a tool run knows of the console: text goes in at the end. All calls come on the main
/// thread, in order.
class Console {
public:
    Console() = default;
    Console(const Console &) = delete;
    Console &operator=(const Console &) = delete;
    virtual ~Console() = default;

    /// Appends \a text to the end of the text storage exactly as it is and shows the end.
    virtual void appendText(const QString &text) = 0;
    /// A run begins: its lines never rewrite what stands before this point.
    virtual void beginRun() = 0;
    /// The run's output is complete and only its exit message follows: an unfinished escape
    /// sequence ends here, so that it cannot swallow the message.
    virtual void endRun() = 0;
};

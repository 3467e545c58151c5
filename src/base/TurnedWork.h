// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

/// Work that is done piece by piece, on turns of the event loop that are shorter than a frame, as
/// long as there is memory for it. done() or outOfMemory() ends it, unless it is stopped.
/// Whoever listens must not throw: on a turn of the event loop nobody is there to catch it.
class TurnedWork final : public QObject {
    Q_OBJECT

public:
    /// \a advance does the next piece, which takes a small part of a turn, and gives true when all
    /// is done. Where it throws std::bad_alloc there is no memory for it.
    explicit TurnedWork(std::function<bool()> advance);

    /// Goes to work with the next turn of the event loop.
    void start() { turns_.start(0); }
    /// Works for as long as a turn at once.
    void takeTurn();
    void stop() { turns_.stop(); }
    bool isRunning() const { return turns_.isActive(); }

signals:
    /// A turn is over, and there is more to do.
    void advanced();
    void done();
    void outOfMemory();

private:
    std::function<bool()> advance_;
    QTimer turns_;
};

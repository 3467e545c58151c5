// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <functional>

/// The main thread's queue of work to be done a turn of the event loop later. All such work of
/// the program goes through one object, because only events of one receiver keep the order in
/// which they were posted (zero timers and other receivers' events may overtake).
///
/// Must be created on the main thread; async() may be called from any thread.
class MainQueue final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Queues \a work and returns at once. Pieces queued from one thread run in that order.
    /// Work still queued when this object is destroyed never runs.
    void async(std::function<void()> work);
};

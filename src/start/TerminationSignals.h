// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"

#include <QObject>

class QSocketNotifier;

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal on the main thread, so that being asked to
/// end takes the same way as closing the window. One of them that the program was started with
/// ignored stays ignored. One object for each process; its destructor puts back what it found.
/// Where the system gives it no pipe, the signals keep ending the program on the spot.
class TerminationSignals final : public QObject {
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

signals:
    /// One of the three signals arrived.
    void received();

private:
    void drain();

    FileDescriptor readingEnd_;
    FileDescriptor wakeUpEnd_;
    QSocketNotifier *notifier_ = nullptr;
};

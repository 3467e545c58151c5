// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "start/RaiseAddress.h"

#include <QLocalServer>
#include <QObject>
#include <QString>

class QLocalSocket;

/// The holder's end of the line between two starts of the program on one workspace: a second start
/// asks, and this one brings its window to the front and opens the file that the other was given.
/// Other users are not answered.
class RaiseServer final : public QObject {
    Q_OBJECT

public:
    /// Listens at \a address, which only the holder of the workspace's lock may do: what an
    /// earlier holder left there is removed. If listening fails, later starts cannot raise the
    /// window and say so.
    explicit RaiseServer(const RaiseAddress &address, QObject *parent = nullptr);

signals:
    /// Another start asked for the window.
    void raiseRequested();
    /// Follows raiseRequested() where the other start was to open the file at the absolute \a path.
    void openRequested(const QString &path);

private:
    void listen(QLocalServer &server, const QString &name);
    void greetCallers(QLocalServer &server);
    void answer(QLocalSocket &caller);

    QLocalServer byPath_;
    QLocalServer byName_;
};

/// What a request for the window came to.
enum class RaiseAnswer {
    Raised,
    /// Nobody listens, or whoever did has ended without an answer.
    Nobody,
    /// Somebody listens, but is another user, or has not answered for three seconds.
    Silence
};

/// Asks the program of this user that listens at \a address to bring its window to the front and,
/// unless \a binary is empty, to open the file at that absolute path.
RaiseAnswer requestRaise(const RaiseAddress &address, const QString &binary = {});

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

class QLocalSocket;

/// The holder's end of the line between two starts of the program on one workspace: a second start
/// asks, and this one brings its window to the front and opens the file that the other was given.
class RaiseServer final : public QObject {
    Q_OBJECT

public:
    /// Listens at \a socketPath, which only the holder of the workspace's lock may do: what an
    /// earlier holder left there is removed. If listening fails, later starts cannot raise the
    /// window and say so.
    explicit RaiseServer(const QString &socketPath, QObject *parent = nullptr);

signals:
    /// Another start asked for the window.
    void raiseRequested();
    /// Follows raiseRequested() where the other start was to open the file at the absolute \a path.
    void openRequested(const QString &path);

private:
    void greetCallers();
    void answer(QLocalSocket &caller);

    QLocalServer server_;
};

/// What a request for the window came to.
enum class RaiseAnswer {
    Raised,
    /// Nobody listens, or whoever did has ended without an answer.
    Nobody,
    /// Somebody listens, but has not answered for three seconds.
    Silence
};

/// Asks the program that listens at \a socketPath to bring its window to the front and, unless
/// \a binary is empty, to open the file at that absolute path.
RaiseAnswer requestRaise(const QString &socketPath, const QString &binary = {});

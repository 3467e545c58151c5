#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>

/// The holder's end of the line between two starts of the program on one workspace: a second start
/// asks, and this one brings its window to the front.
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

private:
    void answer();

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

/// Asks the program that listens at \a socketPath to bring its window to the front.
RaiseAnswer requestRaise(const QString &socketPath);

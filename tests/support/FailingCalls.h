// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QMap>

#include <functional>

/// While it lives, one of the program's calls to the file system goes wrong, or something else
/// happens just before it. It counts the calls of the program and of the libraries in it from 1,
/// those that read and write pipes and the like left out, and those of other threads but for the
/// question to the disk; a test that tries each number in turn, until none is struck any more, has
/// tried every moment. Link failing_calls to the test. One at a time.
class FailingCalls {
public:
    /// What happens at the call that is struck.
    enum class Mishap {
        Fails,    ///< it does nothing and fails with the given error; the next ones work again
        Shortens, ///< it reads or writes just half of the bytes; other calls are not counted
        Kills     ///< the program is as good as dead: no later call changes anything on the disk
    };

    /// Strikes call number \a call with \a mishap; \a error is an errno value.
    FailingCalls(int call, Mishap mishap, int error);
    /// Lets call number \a call of the functions whose names begin with \a name fail with \a error;
    /// only they are counted ("open" stands for open64 and openat, too).
    FailingCalls(const QByteArray &name, int call, int error);
    /// The same with another \a mishap.
    FailingCalls(const QByteArray &name, int call, Mishap mishap, int error);
    /// Has \a meanwhile done before call number \a call of this thread, as by another program at
    /// that moment.
    FailingCalls(int call, std::function<void()> meanwhile);
    ~FailingCalls();
    FailingCalls(const FailingCalls &) = delete;
    FailingCalls &operator=(const FailingCalls &) = delete;

    /// Lets call number \a later behind the one that is struck fail with the error as well,
    /// whichever it is of; none if that is 0. Each further call of this adds one.
    void failAgain(int later);

    /// True once the call that is struck has been made.
    bool hasStruck() const;
    /// The name of the function that was struck; empty before.
    QByteArray struckCall() const;
    /// The functions that were called so far, and how often each was.
    QMap<QByteArray, int> callsMade() const;
};

/// Whether \a given, as FailingCalls is given it, stands for the function \a name.
bool standsFor(QByteArrayView given, QByteArrayView name);

/// How long the program has asked to sleep so far, in milliseconds, whatever it was woken by.
double millisecondsSlept();

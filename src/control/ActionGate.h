// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCoreApplication>

#include <functional>
#include <utility>

class Messages;
class WorkState;

/// What every action of the window asks before it starts a run, changes a setting or an image.
class ActionGate {
    Q_DECLARE_TR_FUNCTIONS(ActionGate)

public:
    /// Asks \a work and answers in \a messages; both must outlive it.
    ActionGate(const WorkState &work, Messages &messages) : work_(work), messages_(messages) {}

    /// \a commit takes in whatever is being typed, in a field or in a cell of the grid.
    void setPendingInput(std::function<void()> commit) { commit_ = std::move(commit); }

    /// True while the tool runs for an operation or a search.
    bool isClosed() const;
    /// What closes it, as the beginning of a sentence: "A search is running". It must be closed.
    QString whatCloses() const;
    /// True, and said, while the tool runs for an operation or a search: nothing may be started or
    /// changed then.
    bool refuses() const;
    /// True, and said, as refuses(). Else false: whatever is being typed is committed then, so that
    /// the action finds it done.
    bool refusesElseCommits() const;
    /// Commits whatever is being typed.
    void commitPendingInput() const;

private:
    const WorkState &work_;
    Messages &messages_;
    std::function<void()> commit_;
};

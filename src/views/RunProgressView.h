// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <functional>

class BusyIndicator;
class ScriptedMiniPro;

/// Shows in an indicator how far the newest run has come.
class RunProgressView final : public QObject {
    Q_OBJECT

public:
    /// \a indicator must outlive it, and is started and stopped by others, who know when runs begin
    /// and end.
    explicit RunProgressView(BusyIndicator &indicator, QObject *parent = nullptr);

    /// From now on shows \a run, of an operation, and no earlier one, though what that left running
    /// may go on printing.
    void follow(ScriptedMiniPro *run);
    /// The same for \a run, of a search, which has no steps.
    void followSearch(ScriptedMiniPro *run);

private:
    void follow(ScriptedMiniPro *run, const std::function<void()> &show);

    BusyIndicator &indicator_;
    QMetaObject::Connection said_;
};

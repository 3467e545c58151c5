// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

class ConsoleView;
class MenuButton;
class RunLog;

/// The menu of the newest runs of this start, the last first. Choosing one shows its record, and
/// the console where it begins.
class RunsMenu final : public QObject {
    Q_OBJECT

public:
    /// The most runs that the menu holds.
    static constexpr qsizetype maxEntries = 30;

    /// Belongs to \a button; \a runs and \a console must outlive it.
    RunsMenu(MenuButton &button, const RunLog &runs, ConsoleView &console);

private:
    void fill();
    void show(qsizetype number);

    MenuButton &button_;
    const RunLog &runs_;
    ConsoleView &console_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "settings/WindowMemory.h"
#include "widgets/ViewZoom.h"

#include <QKeySequence>

class QAction;
class QMenu;

namespace Ui {
class MainWindow;
}

/// How the user has grid and console: the size of their letters, whether long lines are wrapped,
/// whether the console is there, what ends an entry. Entries of the menus change it.
class ViewControls final : public QObject {
    Q_OBJECT

public:
    /// Works on \a controls, which must outlive it.
    explicit ViewControls(Ui::MainWindow &controls, QObject *parent = nullptr);

    /// Adds the entries to \a view, and \a beside, which shows the other image, among them.
    void addEntries(QMenu &view, QAction &beside);

    ViewChoices choices() const;
    void setChoices(const ViewChoices &choices);

private:
    void addSize(QMenu &view, const QString &text, QKeySequence::StandardKey key,
                 void (ViewZoom::*change)());
    ViewZoom &zoomInUse();

    Ui::MainWindow &controls_;
    ViewZoom grid_;
    ViewZoom console_;
    QAction *beside_ = nullptr;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "tool/Console.h"
#include "widgets/ConsoleStorage.h"
#include "widgets/TerminalText.h"

#include <QBasicTimer>
#include <QPlainTextEdit>
#include <QTextCharFormat>

#include <optional>

class QAction;
class QMimeData;

/// The console: a storage that keeps every piece exactly as it came, and a view that shows it as a
/// terminal would. The first piece is shown at once; under a flood the view follows in slices, so
/// that the event loop never waits long for it. All calls come on the main thread.
///
/// Every character has the palette's text colour and the system font at fontPoints points.
class ConsoleView final : public QPlainTextEdit, public Console {
    Q_OBJECT

public:
    /// Size of the console's letters, in points.
    static constexpr double fontPoints = 21.0;
    /// The most lines that the view shows; the storage may hold more. As many as the toolkit can
    /// measure all together, as it now and then does, within some tens of milliseconds.
    static constexpr int maxLines = 1 << 16;

    /// An empty console that keeps and shows at most \a limit UTF-16 units.
    explicit ConsoleView(QWidget *parent = nullptr, qsizetype limit = ConsoleStorage::defaultLimit);

    void appendText(const QString &text) override;
    void beginRun() override;
    void endRun() override;

    /// Shows everything that waits to be shown.
    void flush();
    /// Scrolls to where the run \a number begins, counted from 0, as soon as nothing waits to be
    /// shown; to the very first line if that has gone.
    void showRun(qsizetype number);
    /// Empties storage and view.
    void clearAll();
    /// Puts the whole stored text, exactly as it came, on the clipboard; see memoryLacked().
    void copyAll();

    /// The stored text, exactly as it came.
    QString storedText() const { return storage_.text(); }

    /// The height at which \a lines lines are in view, and no more, while no scroll bar takes room
    /// from them.
    int heightFor(int lines) const;

    /// Checkable, on at every start: each append scrolls to the end.
    QAction *followOutputAction() const { return follow_; }
    /// Copies the whole stored text.
    QAction *copyAllAction() const { return copyAll_; }
    /// Asks for the stored text to be saved; see saveRequested().
    QAction *saveAction() const { return save_; }
    /// Empties the console.
    QAction *clearAction() const { return clear_; }
    /// Checkable, off at first: a line that is wider than the view goes on below.
    QAction *wrapAction() const { return wrap_; }
    /// Checkable, on at first: the view is there at all.
    QAction *visibleAction() const { return visible_; }

signals:
    /// The user wants storedText() in a file.
    void saveRequested();
    /// The oldest text has gone for the first time since the console was empty.
    void trimmed();
    /// The oldest lines are out of view for the first time since the console was empty, and are
    /// stored still; not said after trimmed().
    void shortened();
    /// Everything was taken away.
    void cleared();
    /// Nothing was copied: there is not enough memory for the text.
    void memoryLacked() const;

protected:
    void changeEvent(QEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    QMimeData *createMimeDataFromSelection() const override;

private:
    void createActions();
    void createChoices();
    void enableActions();
    void restyle();
    void showPending();
    void apply(const TerminalUpdate &update);
    void restoreSelection(int anchor, int position);
    void trimView();
    void removeFirstLines(int count);
    void noteTrimmed();
    void noteShortened();
    void scrollToEnd();
    void scrollToWantedRun();

    ConsoleStorage storage_;
    TerminalText terminal_;
    QList<qsizetype> runLines_;          ///< where runs begin, by the terminal's line numbers
    std::optional<qsizetype> wantedRun_; ///< to scroll to
    QTextCharFormat format_;
    QBasicTimer timer_;
    bool appended_ = false; ///< since the last turn
    bool saidTrimmed_ = false;
    bool saidShortened_ = false;

    QAction *copy_ = nullptr;
    QAction *copyAll_ = nullptr;
    QAction *save_ = nullptr;
    QAction *selectAll_ = nullptr;
    QAction *clear_ = nullptr;
    QAction *follow_ = nullptr;
    QAction *wrap_ = nullptr;
    QAction *visible_ = nullptr;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ConsoleView.h"

#include "widgets/MenuEntry.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDeadlineTimer>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTimerEvent>
#include <QtMath>

#include <algorithm>
#include <chrono>
#include <memory>
#include <new>
#include <utility>

namespace {

/// What the view takes in at a time, in UTF-16 units: at most a few milliseconds' work, even if
/// each of them is a line.
constexpr qsizetype sliceLength = qsizetype(4) * 1024;

/// After the view was brought up to date, what comes within this time is shown together.
constexpr std::chrono::milliseconds gatherTime(25);

/// How long the view goes on taking in text in one turn of the event loop. What is left of the
/// time until the next turn belongs to whoever prints.
constexpr std::chrono::milliseconds turnTime(10);

/// Each removal costs a copy of the whole text, so this share of the limit goes at once.
constexpr int trimmedShare = 16;

/// Before every line: where the runs begin that were cleared away.
constexpr qsizetype linesGone = -1;

QFont consoleFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    font.setPointSizeF(ConsoleView::fontPoints);
    return font;
}

QString withLineFeeds(QString text) {
    return text.replace(QChar::ParagraphSeparator, u'\n');
}

} // namespace

ConsoleView::ConsoleView(QWidget *parent, qsizetype limit)
    : QPlainTextEdit(parent), storage_(limit) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setLineWrapMode(NoWrap);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFont(consoleFont());
    createActions();
    restyle();
}

void ConsoleView::createActions() {
    const auto add = [this](const QString &text, auto slot) {
        auto *action = new QAction(text, this);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    copy_ = add(tr("&Copy"), &QPlainTextEdit::copy);
    copyAll_ = add(tr("Copy &whole console"), &ConsoleView::copyAll);
    save_ = add(tr("Sa&ve console\u2026"), &ConsoleView::saveRequested);
    selectAll_ = add(tr("Select a&ll"), &QPlainTextEdit::selectAll);
    clear_ = add(tr("Cl&ear console"), &ConsoleView::clearAll);
    createChoices();
    connect(this, &QPlainTextEdit::copyAvailable, copy_, &QAction::setEnabled);
    copy_->setEnabled(false);
    enableActions();
}

void ConsoleView::createChoices() {
    const auto add = [this](const QString &text, bool isOn) {
        auto *action = new QAction(text, this);
        action->setCheckable(true);
        action->setChecked(isOn);
        return action;
    };
    follow_ = add(tr("&Follow output"), true);
    connect(follow_, &QAction::toggled, this, &ConsoleView::scrollToEnd);
    wrap_ = add(tr("Wra&p long lines"), false);
    connect(wrap_, &QAction::toggled, this, [this](bool wraps) {
        setLineWrapMode(wraps ? WidgetWidth : NoWrap);
        scrollToEnd();
    });
    visible_ = add(tr("Show &console"), true);
    connect(visible_, &QAction::toggled, this, &ConsoleView::setVisible);
}

void ConsoleView::enableActions() {
    const bool hasText = storage_.length() > 0;
    for (QAction *action : {copyAll_, save_, selectAll_, clear_})
        action->setEnabled(hasText);
}

void ConsoleView::appendText(const QString &text) {
    if (text.isEmpty())
        return;
    const bool storageTrimmed = storage_.append(text);
    terminal_.feed(text);
    const bool pendingTrimmed = terminal_.dropPendingBeyond(storage_.limit(), maxLines - 1);
    appended_ = true;
    if (!timer_.isActive())
        showPending();
    enableActions();
    if (storageTrimmed)
        noteTrimmed();
    else if (pendingTrimmed)
        noteShortened();
}

void ConsoleView::beginRun() {
    terminal_.beginRun();
    runLines_.append(terminal_.lineNumber());
}

void ConsoleView::endRun() {
    terminal_.endRun();
    if (!timer_.isActive())
        showPending();
}

void ConsoleView::flush() {
    while (terminal_.hasUpdate())
        showPending();
}

void ConsoleView::showRun(qsizetype number) {
    wantedRun_ = number;
    if (!timer_.isActive())
        showPending();
    scrollToWantedRun();
}

// Behind a flood there are tens of thousands of lines to be taken in first, in turns.
void ConsoleView::scrollToWantedRun() {
    if (terminal_.hasUpdate() || !wantedRun_)
        return;
    const qsizetype number = *std::exchange(wantedRun_, std::nullopt);
    const qsizetype linesBack = terminal_.lineNumber() - runLines_.value(number, linesGone);
    const qsizetype line = std::max<qsizetype>(blockCount() - 1 - linesBack, 0);
    const QTextBlock block = document()->findBlockByNumber(int(line));
    setTextCursor(QTextCursor(block));
    // Not the number of the line: one that is wrapped takes more than a row.
    verticalScrollBar()->setValue(block.firstLineNumber());
}

void ConsoleView::clearAll() {
    storage_.clear();
    terminal_.clear();
    runLines_.fill(linesGone);
    wantedRun_.reset();
    saidTrimmed_ = false;
    saidShortened_ = false;
    flush();
    enableActions();
    emit cleared();
}

int ConsoleView::heightFor(int lines) const {
    // The toolkit counts a line as hidden whose last pixel touches the margin.
    constexpr int touchedPixel = 1;
    const int margins = qCeil(2 * document()->documentMargin());
    return lines * fontMetrics().lineSpacing() + margins + touchedPixel + 2 * frameWidth();
}

void ConsoleView::copyAll() {
    try {
        QGuiApplication::clipboard()->setText(storage_.text());
    } catch (const std::bad_alloc &) {
        emit memoryLacked();
    }
}

// Brings the view up to date, or nearer to it, and opens the time in which what comes next is
// gathered. Where nobody printed since the last turn, all the time belongs to the view.
void ConsoleView::showPending() {
    const QDeadlineTimer turn(turnTime);
    const bool any = terminal_.hasUpdate();
    while (terminal_.hasUpdate() && !turn.hasExpired())
        apply(terminal_.takeUpdate(sliceLength));
    if (any) {
        trimView();
        scrollToEnd();
        scrollToWantedRun();
    }
    const bool idle = !std::exchange(appended_, false);
    timer_.start(idle && terminal_.hasUpdate() ? 0 : int(gatherTime.count()), this);
}

void ConsoleView::timerEvent(QTimerEvent *event) {
    if (event->timerId() != timer_.timerId())
        QPlainTextEdit::timerEvent(event);
    else if (terminal_.hasUpdate())
        showPending();
    else
        timer_.stop();
}

void ConsoleView::apply(const TerminalUpdate &update) {
    // Clearing is far cheaper than removing what is there.
    if (update.linesBack == TerminalUpdate::everyLine)
        document()->clear();
    const bool fromStart = update.linesBack >= blockCount();
    const qsizetype number = fromStart ? 0 : blockCount() - 1 - update.linesBack;
    const QTextBlock block = document()->findBlockByNumber(int(number));
    const qsizetype column = fromStart ? 0 : std::min<qsizetype>(update.column, block.length() - 1);
    QTextCursor cursor(document());
    cursor.setPosition(block.position() + int(column));
    const int place = cursor.position();
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    const QTextCursor user = textCursor();
    const int anchor = user.anchor();
    const int position = user.position();
    cursor.insertText(update.text, format_);
    if (std::max(anchor, position) >= place)
        restoreSelection(anchor, position);
}

// What arrives behind the user's cursor or selection must neither take it along nor become part
// of it.
void ConsoleView::restoreSelection(int anchor, int position) {
    const int end = document()->characterCount() - 1;
    const QPoint scrolledTo(horizontalScrollBar()->value(), verticalScrollBar()->value());
    QTextCursor cursor(document());
    cursor.setPosition(std::min(anchor, end));
    cursor.setPosition(std::min(position, end), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    horizontalScrollBar()->setValue(scrolledTo.x());
    verticalScrollBar()->setValue(scrolledTo.y());
}

// The view is bounded as the storage is; whole lines go, and more of them than have to.
void ConsoleView::trimView() {
    const qsizetype tooMany = document()->characterCount() - 1 - storage_.limit();
    const int tooManyLines = blockCount() - maxLines;
    if (tooMany <= 0 && tooManyLines <= 0)
        return;
    const auto place = int(tooMany + storage_.limit() / trimmedShare);
    const int byLength = tooMany > 0 ? document()->findBlock(place).blockNumber() + 1 : 0;
    const int byLines = tooManyLines > 0 ? tooManyLines + maxLines / trimmedShare : 0;
    removeFirstLines(std::clamp(std::max(byLength, byLines), 1, blockCount() - 1));
    noteShortened();
}

void ConsoleView::removeFirstLines(int count) {
    const int scrolledTo = verticalScrollBar()->value();
    QTextCursor cursor(document());
    cursor.setPosition(document()->findBlockByNumber(count).position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    verticalScrollBar()->setValue(scrolledTo - count);
}

void ConsoleView::noteTrimmed() {
    if (!std::exchange(saidTrimmed_, true))
        emit trimmed();
}

void ConsoleView::noteShortened() {
    if (!saidTrimmed_ && !std::exchange(saidShortened_, true))
        emit shortened();
}

// Shows the place behind the last character, and the starts of the lines as well if both are in
// view.
void ConsoleView::scrollToEnd() {
    if (!follow_->isChecked())
        return;
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    horizontalScrollBar()->setValue(horizontalScrollBar()->minimum());
    QTextCursor end(document());
    end.movePosition(QTextCursor::End);
    const QRect place = cursorRect(end);
    if (!viewport()->rect().contains(place))
        horizontalScrollBar()->setValue(place.right() - viewport()->width() + 2 * cursorWidth());
}

void ConsoleView::restyle() {
    format_.setFont(font());
    format_.setForeground(palette().color(QPalette::Text));
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    cursor.setCharFormat(format_);
    cursor.setBlockCharFormat(format_);
}

void ConsoleView::changeEvent(QEvent *event) {
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange)
        restyle();
}

void ConsoleView::contextMenuEvent(QContextMenuEvent *event) {
    auto *menu = new QMenu(this);
    menu->addActions({copy_, copyAll_, save_});
    menu->addSeparator();
    menu->addActions({selectAll_, clear_});
    menu->addSeparator();
    menu->addActions({follow_, wrap_});
    popUp(menu, event->globalPos());
}

// Where text is selected by the mouse, the toolkit asks for it unasked.
QMimeData *ConsoleView::createMimeDataFromSelection() const {
    auto copied = std::make_unique<QMimeData>();
    try {
        copied->setText(withLineFeeds(textCursor().selectedText()));
    } catch (const std::bad_alloc &) {
        emit memoryLacked();
    }
    return copied.release();
}

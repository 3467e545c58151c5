// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/MessageLine.h"

#include "widgets/Announcement.h"
#include "widgets/Palette.h"

#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTextBlock>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace {

/// Room before each button, in pixels.
constexpr int buttonGap = 6;

/// Long enough for the redisplay that follows a deed, and for a screen reader to take in what that
/// brings: while much is queued, it drops notifications. Too short to be waited for.
constexpr std::chrono::milliseconds announcementDelay{250};

/// A plain text editor takes a line that ends just where its viewport does for cut off.
constexpr int spareHeight = 1;

QColor colorOf(MessageLine::Severity severity, const QPalette &palette) {
    switch (severity) {
    case MessageLine::Severity::Problem:
        return failureTextColor(palette);
    case MessageLine::Severity::Warning:
        return warningTextColor(palette);
    case MessageLine::Severity::Success:
        return successTextColor(palette);
    case MessageLine::Severity::Information:
        break;
    }
    return palette.color(QPalette::WindowText);
}

QString withWord(MessageLine::Severity severity, const QString &sentence) {
    switch (severity) {
    case MessageLine::Severity::Problem:
        return MessageLine::tr("Problem: %1").arg(sentence);
    case MessageLine::Severity::Warning:
        return MessageLine::tr("Warning: %1").arg(sentence);
    case MessageLine::Severity::Success:
        return MessageLine::tr("Done: %1").arg(sentence);
    case MessageLine::Severity::Information:
        break;
    }
    return sentence;
}

/// A notice is one line, whatever a path in it may hold.
QString onOneLine(QString sentence) {
    const auto breaksLine = [](QChar c) {
        return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
               c.category() == QChar::Separator_Paragraph;
    };
    std::replace_if(sentence.begin(), sentence.end(), breaksLine, QLatin1Char(' '));
    return sentence;
}

QString withoutMnemonic(QString label) {
    return label.remove(QLatin1Char('&'));
}

} // namespace

MessageLine::MessageLine(QWidget *parent) : QPlainTextEdit(parent) {
    setAccessibleName(tr("Message"));
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(NoFrame);
    viewport()->setAutoFillBackground(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    announcement_.setSingleShot(true);
    announcement_.setInterval(announcementDelay);
    connect(&announcement_, &QTimer::timeout, this, &MessageLine::announce);
    makeButton();
}

QPushButton *MessageLine::makeButton() {
    auto *button = new QPushButton(this);
    button->setAutoDefault(false);
    button->hide();
    connect(button, &QPushButton::clicked, this, [this, button] { runAction(button); });
    buttons_.append(button);
    return button;
}

void MessageLine::setNotice(int topic, Severity severity, const QString &sentence) {
    setNotice(topic, severity, sentence, {});
}

void MessageLine::setNotice(int topic, Severity severity, const QString &sentence,
                            const Action &action) {
    if (sentence.isEmpty()) {
        clearNotice(topic);
        return;
    }
    Notice notice{topic, severity, onOneLine(sentence), action};
    const bool isNewest = !notices_.empty() && notices_.front().saysTheSameAs(notice);
    if (isNewest)
        notice.isAnnounced = notices_.front().isAnnounced;
    if (action.run)
        notice.button = buttonFor(notice);
    std::erase_if(notices_, [&](const Notice &old) { return old.topic == topic; });
    notices_.insert(notices_.begin(), notice);
    // What is said already is not said again to whoever hears it, nor taken out of a selection.
    if (isNewest) {
        showButtons();
        return;
    }
    showNotices();
    announcement_.start();
}

// What one deed brings up is said in one piece, or each sentence would cut the one before it short.
void MessageLine::announce() {
    QStringList words;
    for (Notice &notice : notices_)
        if (!std::exchange(notice.isAnnounced, true))
            words.append(withWord(notice.severity, notice.sentence));
    if (words.isEmpty())
        return;
    const QString said = words.join(QLatin1Char('\n'));
    Announcement::make(said, this);
    emit announced(said);
}

void MessageLine::clearNotice(int topic) {
    if (std::erase_if(notices_, [&](const Notice &notice) { return notice.topic == topic; }) > 0)
        showNotices();
}

void MessageLine::clearAll() {
    notices_.clear();
    showNotices();
}

QString MessageLine::text() const {
    return toPlainText();
}

void MessageLine::showNotices() {
    clear();
    QTextCursor cursor(document());
    for (const Notice &notice : notices_) {
        QTextCharFormat format;
        format.setForeground(colorOf(notice.severity, palette()));
        if (notice.severity == Severity::Problem)
            format.setFontWeight(QFont::Bold);
        if (!cursor.atStart())
            cursor.insertBlock();
        cursor.insertText(withWord(notice.severity, notice.sentence), format);
    }
    moveCursor(QTextCursor::Start);
    showButtons();
}

const MessageLine::Notice *MessageLine::noticeOf(const QPushButton *button) const {
    const auto found = std::find_if(notices_.begin(), notices_.end(),
                                    [&](const Notice &notice) { return notice.button == button; });
    return found == notices_.end() ? nullptr : &*found;
}

/// The button of the topic's former notice if it was for the same, else one that nobody has: who
/// is about to press a button does not find another meaning in it.
QPushButton *MessageLine::buttonFor(const Notice &notice) {
    for (const Notice &old : notices_)
        if (old.topic == notice.topic && old.button && old.action.label == notice.action.label)
            return old.button;
    for (QPushButton *button : std::as_const(buttons_))
        if (!noticeOf(button))
            return button;
    return makeButton();
}

void MessageLine::showButtons() {
    // Each is raised after the one before it: the order of the children is that of the notices.
    QWidget *before = this;
    for (const Notice &notice : notices_) {
        if (!notice.button)
            continue;
        notice.button->setText(notice.action.label);
        notice.button->setAccessibleName(withoutMnemonic(notice.action.label));
        notice.button->raise();
        setTabOrder(std::exchange(before, notice.button), notice.button);
        notice.button->show();
    }
    for (QPushButton *button : std::as_const(buttons_)) {
        if (noticeOf(button))
            continue;
        button->raise();
        button->hide();
    }
    placeButtons();
}

// The newest notice's button is the nearest to the text, so that it moves no other when it comes.
void MessageLine::placeButtons() {
    int end = width();
    for (auto notice = notices_.rbegin(); notice != notices_.rend(); ++notice) {
        if (!notice->button)
            continue;
        const QSize size(notice->button->sizeHint().width(), heightOfLines(1));
        const QRect place(QPoint(end - size.width(), 0), size);
        notice->button->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
        end -= size.width() + buttonGap;
    }
    setViewportMargins(0, 0, width() - end, 0);
}

void MessageLine::runAction(const QPushButton *button) const {
    const Notice *notice = noticeOf(button);
    if (!notice)
        return;
    // A copy: what the action does may well take its own notice away.
    const std::function<void()> run = notice->action.run;
    run();
}

// As high as a button however few lines there are, so that one that comes moves nothing.
int MessageLine::heightOfLines(int lines) const {
    const double text =
        lines * fontMetrics().lineSpacing() + 2 * document()->documentMargin() + spareHeight;
    return std::max(int(std::ceil(text)), buttons_.front()->sizeHint().height());
}

QSize MessageLine::sizeHint() const {
    return {QPlainTextEdit::sizeHint().width(), heightOfLines(shownLines)};
}

QSize MessageLine::minimumSizeHint() const {
    return {QPlainTextEdit::minimumSizeHint().width(), sizeHint().height()};
}

void MessageLine::changeEvent(QEvent *event) {
    QPlainTextEdit::changeEvent(event);
    const bool restyled = event->type() == QEvent::PaletteChange ||
                          event->type() == QEvent::FontChange ||
                          event->type() == QEvent::StyleChange;
    if (restyled && !buttons_.isEmpty())
        showNotices();
}

void MessageLine::resizeEvent(QResizeEvent *event) {
    QPlainTextEdit::resizeEvent(event);
    placeButtons();
}

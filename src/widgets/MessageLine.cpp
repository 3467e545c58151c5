// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/MessageLine.h"

#include "base/BoundedText.h"
#include "base/VisibleText.h"
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

QString withoutMnemonic(QString label) {
    return label.remove(u'&');
}

} // namespace

QColor MessageLine::colorOf(Severity severity, const QPalette &palette) {
    switch (severity) {
    case Severity::Problem:
        return failureTextColor(palette);
    case Severity::Warning:
        return warningTextColor(palette);
    case Severity::Success:
        return successTextColor(palette);
    case Severity::Information:
        break;
    }
    return palette.color(QPalette::WindowText);
}

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

void MessageLine::setMessage(int topic, Severity severity, const QString &sentence,
                             const Action &action) {
    Message message{topic, severity, onOneLine(boundedText(sentence)), action};
    const bool isNewest = !messages_.empty() && messages_.front().saysTheSameAs(message);
    if (isNewest)
        message.isAnnounced = messages_.front().isAnnounced;
    if (action.run)
        message.button = buttonFor(message);
    std::erase_if(messages_, [&](const Message &old) { return old.topic == topic; });
    messages_.insert(messages_.begin(), message);
    // What is said already is not said again to whoever hears it, nor taken out of a selection.
    if (isNewest) {
        showButtons();
        return;
    }
    showMessages();
    announcement_.start();
}

// What one deed brings up is said in one piece, or each sentence would cut the one before it short.
void MessageLine::announce() {
    QStringList words;
    for (Message &message : messages_)
        if (!std::exchange(message.isAnnounced, true))
            words.append(withWord(message.severity, message.sentence));
    if (words.isEmpty())
        return;
    const QString said = words.join(u'\n');
    Announcement::make(said, this);
    emit announced(said);
}

void MessageLine::clearMessage(int topic) {
    if (std::erase_if(messages_, [&](const Message &message) { return message.topic == topic; }) >
        0)
        showMessages();
}

void MessageLine::showMessages() {
    clear();
    QTextCursor cursor(document());
    for (const Message &message : messages_) {
        QTextCharFormat format;
        format.setForeground(colorOf(message.severity, palette()));
        if (message.severity == Severity::Problem)
            format.setFontWeight(QFont::Bold);
        if (!cursor.atStart())
            cursor.insertBlock();
        cursor.insertText(withWord(message.severity, message.sentence), format);
    }
    moveCursor(QTextCursor::Start);
    showButtons();
}

const MessageLine::Message *MessageLine::messageOf(const QPushButton *button) const {
    const auto found =
        std::find_if(messages_.begin(), messages_.end(),
                     [&](const Message &message) { return message.button == button; });
    return found == messages_.end() ? nullptr : &*found;
}

// The button of the topic's former message if it was for the same, else one that nobody has:
// whoever is about to press a button does not find another meaning in it.
QPushButton *MessageLine::buttonFor(const Message &message) {
    for (const Message &old : messages_)
        if (old.topic == message.topic && old.button && old.action.label == message.action.label)
            return old.button;
    for (QPushButton *button : std::as_const(buttons_))
        if (!messageOf(button))
            return button;
    return makeButton();
}

void MessageLine::showButtons() {
    // Each is raised after the one before it: the order of the children is that of the messages.
    QWidget *before = this;
    for (const Message &message : messages_) {
        if (!message.button)
            continue;
        message.button->setText(message.action.label);
        message.button->setAccessibleName(withoutMnemonic(message.action.label));
        message.button->raise();
        setTabOrder(std::exchange(before, message.button), message.button);
        message.button->show();
    }
    for (QPushButton *button : std::as_const(buttons_)) {
        if (messageOf(button))
            continue;
        button->raise();
        button->hide();
    }
    placeButtons();
}

// The newest message's button is the nearest to the text, so that it moves no other when it comes.
void MessageLine::placeButtons() {
    const QScrollBar *bar = verticalScrollBar();
    const int start = width() - (bar->isVisible() ? bar->width() : 0);
    int end = start;
    for (auto message = messages_.rbegin(); message != messages_.rend(); ++message) {
        if (!message->button)
            continue;
        const QSize size(message->button->sizeHint().width(), heightOfLines(1));
        const QRect place(QPoint(end - size.width(), 0), size);
        message->button->setGeometry(QStyle::visualRect(layoutDirection(), rect(), place));
        end -= size.width() + buttonGap;
    }
    setViewportMargins(0, 0, start - end, 0);
}

void MessageLine::runAction(const QPushButton *button) const {
    const Message *message = messageOf(button);
    if (!message)
        return;
    // A copy: what the action does may well take its own message away.
    const std::function<void()> run = message->action.run;
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
        showMessages();
}

void MessageLine::resizeEvent(QResizeEvent *event) {
    QPlainTextEdit::resizeEvent(event);
    placeButtons();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPlainTextEdit>
#include <QTimer>

#include <functional>
#include <vector>

class QPushButton;

/// Says inline what other programs say in dialogs. Each message has a topic, a number that means
/// nothing here; a topic has at most one message. Messages are shown newest first, one to a line.
/// The text scrolls where they take more than shownLines lines.
///
/// It is a read-only text itself, so that its accessible object, named "Message", is the text:
/// selectable, reachable by keyboard (Tab leaves it), and always of one height, so that the window
/// does not jump when a message comes. The severity is a word as well as a colour.
/// Assistive technology hears each message once, those of one moment together, the newest first.
class MessageLine final : public QPlainTextEdit {
    Q_OBJECT

public:
    enum class Severity { Information, Success, Warning, Problem };

    /// Of text that is as serious as \a severity says, on the ground of a window.
    static QColor colorOf(Severity severity, const QPalette &palette);

    /// What a message lets the user do about it.
    struct Action {
        /// Text of the button, translated; also its accessible name.
        QString label;
        /// Called when the button is pressed.
        std::function<void()> run;
    };

    /// Its height in lines.
    static constexpr int shownLines = 2;

    explicit MessageLine(QWidget *parent = nullptr);

    /// Shows \a sentence (translated) as the newest message, in place of the topic's former one.
    /// With an action there is a button behind the text. Each message with one has a button of its
    /// own, which keeps its meaning until the message goes; the newest message's is the first.
    void setMessage(int topic, Severity severity, const QString &sentence, const Action &action);
    /// Takes the message of \a topic away, if there is one.
    void clearMessage(int topic);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// Assistive technology is told of what has come up: \a text, as it stands there.
    void announced(const QString &text);

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Message {
        int topic = 0;
        Severity severity = Severity::Information;
        QString sentence;
        Action action;
        QPushButton *button = nullptr; ///< null without an action
        bool isAnnounced = false;

        bool saysTheSameAs(const Message &other) const {
            return topic == other.topic && severity == other.severity && sentence == other.sentence;
        }
    };

    QPushButton *makeButton();
    QPushButton *buttonFor(const Message &message);
    const Message *messageOf(const QPushButton *button) const;
    void showMessages();
    void announce();
    void showButtons();
    void placeButtons();
    void runAction(const QPushButton *button) const;
    int heightOfLines(int lines) const;

    std::vector<Message> messages_; ///< newest first
    QList<QPushButton *> buttons_;  ///< at least one; what no message has is hidden
    QTimer announcement_;
};

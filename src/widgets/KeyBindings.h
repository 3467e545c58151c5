// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QAbstractButton>
#include <QLineEdit>
#include <QObject>
#include <QPointer>
#include <QString>

#include <functional>
#include <optional>

class SettingsStore;

// The ties that a KeyBinder makes, one object for each. They are its children, and what they call
// when an action is due is the binder's.

/// A text field and the text of a key.
class TextBinding final : public QObject {
    Q_OBJECT

public:
    using Send = std::function<void(QObject *sender)>;

    TextBinding(SettingsStore &settings, QLineEdit *field, const QString &key, Send send,
                QObject *parent);

    /// Sends the action if the field's text differs from what was sent last.
    void sendIfChanged();
    /// Another control has sent an action that took this field's text as it is now; what was sent
    /// last no longer says what the field's next action would change.
    void forgetSentIfChanged();

private:
    void showStored(const QString &key);
    void noteTyping() { typing_ = true; }
    void takeText(const QString &text);

    SettingsStore &settings_;
    QPointer<QLineEdit> field_;
    QString key_;
    Send send_;
    std::optional<QString> sent_;
    bool showing_ = false; ///< a value of the store is on its way into the field
    bool typing_ = false;  ///< the coming change of text is the user's own editing
};

/// A checkable button and a boolean key.
class SwitchBinding final : public QObject {
    Q_OBJECT

public:
    SwitchBinding(SettingsStore &settings, QAbstractButton *button, const QString &key,
                  TextBinding::Send send, QObject *parent);

private:
    void showStored(const QString &key);
    void takeState(bool on);

    SettingsStore &settings_;
    QPointer<QAbstractButton> button_;
    QString key_;
    TextBinding::Send send_;
    bool showing_ = false;
};

/// Two buttons of which one is on, and a boolean key for each.
class RadioPairBinding final : public QObject {
    Q_OBJECT

public:
    /// A button and its key.
    struct Side {
        QPointer<QAbstractButton> button;
        QString key;
    };

    RadioPairBinding(SettingsStore &settings, const Side &first, const Side &second,
                     TextBinding::Send send, QObject *parent);

private:
    void showStored(const QString &key);
    void takeState(const Side &side, bool on);

    SettingsStore &settings_;
    Side first_;
    Side second_;
    TextBinding::Send send_;
    bool showing_ = false;
};

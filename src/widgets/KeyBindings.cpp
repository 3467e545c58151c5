// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/KeyBindings.h"

#include "settings/SettingsStore.h"

#include <QButtonGroup>
#include <QScopedValueRollback>

#include <utility>

TextBinding::TextBinding(SettingsStore &settings, QLineEdit *field, const QString &key, Send send,
                         QObject *parent)
    : QObject(parent), settings_(settings), field_(field), key_(key), send_(std::move(send)) {
    showStored(key_);
    sent_ = field_->text();
    connect(&settings_, &SettingsStore::valueChanged, this, &TextBinding::showStored);
    connect(&settings_, &SettingsStore::changeRefused, this, &TextBinding::showStored);
    connect(field_, &QLineEdit::textEdited, this, &TextBinding::noteTyping);
    connect(field_, &QLineEdit::textChanged, this, &TextBinding::takeText);
    if (send_)
        connect(field_, &QLineEdit::editingFinished, this, &TextBinding::sendIfChanged);
}

void TextBinding::showStored(const QString &key) {
    if (key != key_ || !field_)
        return;
    const QString stored = settings_.stringValue(key_);
    // An equal text stays untouched, so that the cursor of whoever is typing stays where it is.
    if (stored == field_->text())
        return;
    const QScopedValueRollback guard(showing_, true);
    field_->setText(stored);
    sent_ = field_->text();
}

void TextBinding::takeText(const QString &text) {
    const bool typed = std::exchange(typing_, false);
    if (showing_)
        return;
    // Assistive technology can set a text that nobody can type.
    if (field_ && field_->isReadOnly()) {
        showStored(key_);
        return;
    }
    if (!settings_.setValue(key_, text))
        return;
    // A text that assistive technology set: no Enter and no leaving will follow.
    if (!typed && field_ && !field_->hasFocus())
        sendIfChanged();
}

void TextBinding::sendIfChanged() {
    if (!send_ || !field_ || sent_ == field_->text())
        return;
    sent_ = field_->text();
    send_(field_);
}

void TextBinding::forgetSentIfChanged() {
    if (field_ && sent_ != field_->text())
        sent_.reset();
}

SwitchBinding::SwitchBinding(SettingsStore &settings, QAbstractButton *button, const QString &key,
                             TextBinding::Send send, QObject *parent)
    : QObject(parent), settings_(settings), button_(button), key_(key), send_(std::move(send)) {
    if (!key_.isEmpty()) {
        showStored(key_);
        connect(&settings_, &SettingsStore::valueChanged, this, &SwitchBinding::showStored);
        connect(&settings_, &SettingsStore::changeRefused, this, &SwitchBinding::showStored);
    }
    connect(button_, &QAbstractButton::toggled, this, &SwitchBinding::takeState);
}

void SwitchBinding::showStored(const QString &key) {
    if (key != key_ || !button_)
        return;
    const QScopedValueRollback guard(showing_, true);
    button_->setChecked(settings_.boolValue(key_));
}

void SwitchBinding::takeState(bool on) {
    if (showing_)
        return;
    if (!key_.isEmpty()) {
        if (!settings_.setValue(key_, on))
            return;
    } else if (!settings_.mayChange()) {
        // What it sends would be refused; it must not show what nobody took.
        const QScopedValueRollback guard(showing_, true);
        button_->setChecked(!on);
    }
    if (send_)
        send_(button_);
}

RadioPairBinding::RadioPairBinding(SettingsStore &settings, const Side &first, const Side &second,
                                   TextBinding::Send send, QObject *parent)
    : QObject(parent), settings_(settings), first_(first), second_(second), send_(std::move(send)) {
    // A group of their own: the pair excludes each other and nothing else in the same box.
    auto *group = new QButtonGroup(this);
    group->addButton(first_.button);
    group->addButton(second_.button);
    showStored(first_.key);
    connect(&settings_, &SettingsStore::valueChanged, this, &RadioPairBinding::showStored);
    connect(&settings_, &SettingsStore::changeRefused, this, &RadioPairBinding::showStored);
    connect(first_.button, &QAbstractButton::toggled, this,
            [this](bool on) { takeState(first_, on); });
    connect(second_.button, &QAbstractButton::toggled, this,
            [this](bool on) { takeState(second_, on); });
}

void RadioPairBinding::showStored(const QString &key) {
    const bool ours = key == first_.key || key == second_.key;
    if (!ours || !first_.button || !second_.button)
        return;
    const QScopedValueRollback guard(showing_, true);
    const Side &on = settings_.boolValue(second_.key) ? second_ : first_;
    on.button->setChecked(true);
}

// The button that goes off signals first. Both keys are written when the other one comes on, and at
// once, so that nobody ever finds a state in between.
void RadioPairBinding::takeState(const Side &side, bool on) {
    if (showing_ || !on)
        return;
    const Side &other = &side == &first_ ? second_ : first_;
    if (settings_.setValues({{other.key, false}, {side.key, true}}) && send_)
        send_(side.button);
}

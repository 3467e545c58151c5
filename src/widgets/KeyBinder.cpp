// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/KeyBinder.h"

#include "widgets/KeyBindings.h"

#include <QGuiApplication>
#include <QInputMethod>

#include <utility>

KeyBinder::KeyBinder(SettingsStore &settings, QObject *parent)
    : QObject(parent), settings_(settings) {}

KeyBinder::~KeyBinder() = default;

// What a binding calls when its action is due; nothing if there is no action.
KeyBinder::Action KeyBinder::sending(Action action) {
    if (!action)
        return {};
    return [this, action = std::move(action)](QObject *sender) {
        for (TextBinding *field : fields_)
            field->forgetSentIfChanged();
        action(sender);
    };
}

void KeyBinder::bindText(QLineEdit *field, const QString &key) {
    bindTextWithAction(field, key, {});
}

void KeyBinder::bindTextWithAction(QLineEdit *field, const QString &key, Action action) {
    fields_.push_back(new TextBinding(settings_, field, key, sending(std::move(action)), this));
}

void KeyBinder::bindSwitch(QAbstractButton *button, const QString &key, Action action) {
    new SwitchBinding(settings_, button, key, sending(std::move(action)), this);
}

void KeyBinder::bindRadioPair(QAbstractButton *first, const QString &firstKey,
                              QAbstractButton *second, const QString &secondKey, Action action) {
    new RadioPairBinding(settings_, {first, firstKey}, {second, secondKey},
                         sending(std::move(action)), this);
}

void KeyBinder::commitPending() {
    // On some platforms this ends the program if nothing has the focus.
    if (QGuiApplication::focusObject())
        QGuiApplication::inputMethod()->commit();
    for (TextBinding *field : fields_)
        field->sendIfChanged();
}

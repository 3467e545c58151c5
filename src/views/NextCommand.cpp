// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/NextCommand.h"

#include "settings/SettingsStore.h"
#include "widgets/PlainToolTip.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>

NextCommand::NextCommand(QWidget *parent) : QLineEdit(parent) {
    setReadOnly(true);
}

void NextCommand::setSettings(SettingsStore &settings) {
    settings_ = &settings;
    connect(&settings, &SettingsStore::valueChanged, this, &NextCommand::showCommand);
    showCommand();
}

void NextCommand::follow(QAbstractButton *button, Operation operation) {
    operations_.insert(button, operation);
    button->installEventFilter(this);
}

void NextCommand::copyAll() const {
    QGuiApplication::clipboard()->setText(command_);
}

bool NextCommand::eventFilter(QObject *object, QEvent *event) {
    switch (event->type()) {
    case QEvent::Enter:
    case QEvent::Leave:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        // The button itself takes the event after this.
        QMetaObject::invokeMethod(this, &NextCommand::showCommand, Qt::QueuedConnection);
        break;
    default:
        break;
    }
    return QLineEdit::eventFilter(object, event);
}

Operation NextCommand::nextOperation() const {
    for (auto button = operations_.begin(); button != operations_.end(); ++button)
        if (button.key()->underMouse())
            return button.value();
    for (auto button = operations_.begin(); button != operations_.end(); ++button)
        if (button.key()->hasFocus())
            return button.value();
    return WriteOperation;
}

void NextCommand::showCommand() {
    const QString command = operationCommand(nextOperation(), ToolSettings::readFrom(*settings_));
    if (command == command_)
        return;
    command_ = command;
    setText(command);
    setCursorPosition(0);
    setPlainToolTip(*this, command);
}

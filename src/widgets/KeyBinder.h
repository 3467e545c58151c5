// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <vector>

class QAbstractButton;
class QLineEdit;
class SettingsStore;
class TextBinding;

/// Ties controls to their settings keys. A control shows its key's value from the moment it is
/// bound and writes the key itself when the user (or assistive technology) changes it; the value
/// is in the store before an action is sent. A change that comes from the store updates the
/// control, writes nothing and sends nothing.
class KeyBinder final : public QObject {
    Q_OBJECT

public:
    /// What a control sends; the argument is the control.
    using Action = std::function<void(QObject *sender)>;

    /// A binder of controls to the keys of \a settings, which must outlive it.
    explicit KeyBinder(SettingsStore &settings, QObject *parent = nullptr);
    ~KeyBinder() override;

    /// Ties \a field to the text of \a key: written at every change.
    void bindText(QLineEdit *field, const QString &key);
    /// The same, and sends \a action once, by Enter or on leaving the field, when its text differs
    /// from what it last sent. A text set from outside (assistive technology) while the field is
    /// not in use is sent at once, since nobody will leave the field.
    void bindTextWithAction(QLineEdit *field, const QString &key, Action action);
    /// Ties the checkable \a button to the boolean \a key, and sends \a action (if there is one)
    /// at every toggle. An empty \a key stores nothing: the button only sends.
    void bindSwitch(QAbstractButton *button, const QString &key, Action action = {});
    /// Ties two buttons, of which exactly one is on, each to its own key. Only the one that became
    /// on sends \a action, when both keys are in the store. Where the store has both or neither
    /// on, \a second shows on if its key is true, else \a first.
    void bindRadioPair(QAbstractButton *first, const QString &firstKey, QAbstractButton *second,
                       const QString &secondKey, Action action);

    /// Sends the action of each field whose text differs from what it last sent, text that an
    /// input method is composing included. To be called before anything acts on the settings.
    void commitPending();

private:
    Action sending(Action action);

    SettingsStore &settings_;
    std::vector<TextBinding *> fields_;
};

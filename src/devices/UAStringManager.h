// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QStringList>

class Log;
class QAction;
class QLineEdit;
class QPushButton;
class SettingsStore;

/// The user's favourite devices: a list of names kept in the settings under "favourites", shown
/// as the menu of a button. The store, not this object, is the authority: both edits read the list
/// afresh. Names are compared exactly (the same characters, case included).
class UAStringManager final : public QObject {
    Q_OBJECT

public:
    UAStringManager(SettingsStore &settings, Log &log, QObject *parent = nullptr);

    /// The button whose menu lists the favourites; set before awakeFromNib().
    QPushButton *dButton = nullptr;
    /// The device field. It follows its settings key by itself.
    QLineEdit *uaTextField = nullptr;

    /// Registers the default list, reads the list and fills the menu. Called once, when the window
    /// has been made and before the controller starts up.
    void awakeFromNib();

    void readDict();
    void writeDict();

    /// Adds the current device at the end of the list, unless it is empty or there already.
    void addFavourite(QObject *sender);
    /// Takes the current device out of the list, if it is there.
    void removeFavourite(QObject *sender);

    bool array_ContainsString(const QStringList &array, const QString &string) const;
    /// Index of the first equal element, or -1.
    qsizetype array_indexOfMatchingString(const QStringList &array, const QString &string) const;

    /// Rebuilds the button's menu: exactly the favourites, in their order.
    void populateMenu();
    /// Makes the name that \a sender stands for the current device.
    void itemSelected(QAction *sender);

signals:
    /// Something worth saying in the message line.
    void remark(const QString &sentence);
    /// The menu is about to show them: what was said of it is seen now.
    void listShown();
    /// The favourites are other ones.
    void listChanged();

private:
    void remarkOnMenu();
    bool store(const QStringList &list);
    void pick(QAction *item);

    SettingsStore &defaults;
    Log &log_;
    /// The favourites as last read from or written to the store.
    QStringList dict;
};

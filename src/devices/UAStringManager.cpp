// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/UAStringManager.h"

#include "base/Log.h"
#include "base/ShownName.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "widgets/MenuText.h"

#include <QAction>
#include <QMenu>
#include <QPushButton>

#include <utility>

namespace {

const QString firstFavourite = QStringLiteral("W27C512@DIP28");

} // namespace

UAStringManager::UAStringManager(SettingsStore &settings, Log &log, QObject *parent)
    : QObject(parent), defaults(settings), log_(log) {}

void UAStringManager::awakeFromNib() {
    defaults.registerDefaults({{settingsKeys::favourites, QStringList{firstFavourite}}});
    if (!dButton->menu()) {
        auto *menu = new QMenu(dButton);
        dButton->setMenu(menu);
        connect(menu, &QMenu::triggered, this, &UAStringManager::pick);
        connect(menu, &QMenu::aboutToShow, this, &UAStringManager::remarkOnMenu);
    }
    connect(&defaults, &SettingsStore::valueChanged, this, [this](const QString &key) {
        if (key == settingsKeys::favourites)
            emit listChanged();
    });
    readDict();
    populateMenu();
}

void UAStringManager::readDict() {
    dict = defaults.stringListValue(settingsKeys::favourites);
}

void UAStringManager::writeDict() {
    defaults.setValue(settingsKeys::favourites, dict);
}

void UAStringManager::addFavourite(QObject *) {
    QStringList list = defaults.stringListValue(settingsKeys::favourites);
    const QString device = defaults.stringValue(settingsKeys::device);
    if (device.isEmpty()) {
        emit remark(tr("Enter a device first: there is nothing to add."));
        return;
    }
    if (array_ContainsString(list, device)) {
        emit remark(tr("%1 is a favourite already.").arg(shownName(device)));
        return;
    }
    list.append(device);
    if (store(list))
        emit remark(tr("%1 was added to the favourites.").arg(shownName(device)));
}

void UAStringManager::removeFavourite(QObject *) {
    QStringList list = defaults.stringListValue(settingsKeys::favourites);
    const QString device = defaults.stringValue(settingsKeys::device);
    const qsizetype index = array_indexOfMatchingString(list, device);
    if (index == -1) {
        emit remark(device.isEmpty()
                        ? tr("Enter a device first: there is nothing to remove.")
                        : tr("%1 is not among the favourites.").arg(shownName(device)));
        return;
    }
    list.removeAt(index);
    if (store(list))
        emit remark(tr("%1 was removed from the favourites.").arg(shownName(device)));
}

void UAStringManager::remarkOnMenu() {
    emit listShown();
    if (dict.isEmpty())
        emit remark(tr("There are no favourites: enter a device and add it."));
}

// The menu keeps what it shows where the list could not be changed.
bool UAStringManager::store(const QStringList &list) {
    if (!defaults.setValue(settingsKeys::favourites, list))
        return false;
    dict = list;
    populateMenu();
    return true;
}

bool UAStringManager::array_ContainsString(const QStringList &array, const QString &string) const {
    return array.contains(string, Qt::CaseSensitive);
}

qsizetype UAStringManager::array_indexOfMatchingString(const QStringList &array,
                                                       const QString &string) const {
    return array.indexOf(string);
}

void UAStringManager::populateMenu() {
    QMenu *menu = dButton->menu();
    menu->clear();
    log_.write(QStringLiteral("populateMenu is adding %1 items").arg(dict.size()));
    for (const QString &name : std::as_const(dict)) {
        QAction *item = menu->addAction(menuText(shownName(name)));
        item->setData(name);
        item->setCheckable(false);
    }
}

// Assistive technology finds the entries of a menu whose button is off as well.
void UAStringManager::pick(QAction *item) {
    if (dButton->isEnabled())
        itemSelected(item);
}

void UAStringManager::itemSelected(QAction *sender) {
    defaults.setValue(settingsKeys::device, sender->data().toString());
}

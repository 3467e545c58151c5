// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/DeviceOffers.h"

#include "devices/DeviceSearchPanel.h"
#include "devices/KnownDevices.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>

#include <utility>

namespace {

constexpr int shownNames = 12;
/// The field may be narrower than a name; in pixels.
constexpr int minWidth = 240;

} // namespace

DeviceOffers::DeviceOffers(const KnownDevices &known, QLineEdit &field, DeviceSearchPanel &panel)
    : known_(known), field_(field), panel_(panel) {
    auto *list = new QListView;
    // Without equal heights it would measure every name before it shows.
    list->setUniformItemSizes(true);
    list->setMinimumWidth(minWidth);
    list->setAccessibleName(tr("Known devices"));
    completer_.setModel(&names_);
    completer_.setPopup(list);
    completer_.setCaseSensitivity(Qt::CaseInsensitive);
    completer_.setFilterMode(Qt::MatchContains);
    completer_.setMaxVisibleItems(shownNames);
    field.setCompleter(&completer_);
    field.installEventFilter(this);
    connect(&known, &KnownDevices::changed, this, &DeviceOffers::takeChange);
    takeChange();
}

void DeviceOffers::takeChange() {
    isBehind_ = true;
    panel_.setLikely(known_.likely());
}

// Only when they are wanted: there may be many, and each search changes them.
void DeviceOffers::listNames() {
    if (std::exchange(isBehind_, false))
        names_.setStringList(known_.all());
}

bool DeviceOffers::eventFilter(QObject *field, QEvent *event) {
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(field, event);
    listNames();
    const bool opens =
        static_cast<QKeyEvent *>(event)->key() == Qt::Key_Down && !completer_.popup()->isVisible();
    if (opens)
        showAll();
    return opens;
}

// A complete name would be offered nothing but itself, so it is offered all.
void DeviceOffers::showAll() {
    completer_.setCompletionPrefix(field_.text());
    if (completer_.completionCount() < 2)
        completer_.setCompletionPrefix({});
    completer_.complete();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/DeviceOffers.h"

#include "devices/DeviceSearchPanel.h"
#include "devices/KnownDevices.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>

namespace {

constexpr int shownNames = 12;
/// The field may be narrower than a name; in pixels.
constexpr int leastWidth = 240;

} // namespace

DeviceOffers::DeviceOffers(const KnownDevices &known, QLineEdit &field, DeviceSearchPanel &panel)
    : known_(known), field_(field), panel_(panel) {
    auto *list = new QListView;
    // Without equal heights it would measure every name before it shows.
    list->setUniformItemSizes(true);
    list->setMinimumWidth(leastWidth);
    list->setAccessibleName(tr("Known devices"));
    completer_.setModel(&names_);
    completer_.setPopup(list);
    completer_.setCaseSensitivity(Qt::CaseInsensitive);
    completer_.setFilterMode(Qt::MatchContains);
    completer_.setMaxVisibleItems(shownNames);
    field.setCompleter(&completer_);
    field.installEventFilter(this);
    connect(&known, &KnownDevices::changed, this, &DeviceOffers::renew);
    renew();
}

void DeviceOffers::renew() {
    names_.setStringList(known_.all());
    panel_.setLikely(known_.likely());
}

bool DeviceOffers::eventFilter(QObject *field, QEvent *event) {
    if (event->type() != QEvent::KeyPress ||
        static_cast<QKeyEvent *>(event)->key() != Qt::Key_Down || completer_.popup()->isVisible())
        return QObject::eventFilter(field, event);
    showAll();
    return true;
}

// A name that is whole would be all that its own completion has.
void DeviceOffers::showAll() {
    completer_.setCompletionPrefix(field_.text());
    if (completer_.completionCount() < 2)
        completer_.setCompletionPrefix({});
    completer_.complete();
}

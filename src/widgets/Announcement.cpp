// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/Announcement.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QTimer>

#include <chrono>

namespace {

/// A screen reader asks for the words when it comes to them, which may take seconds on a busy
/// machine.
constexpr std::chrono::seconds stay{20};

QAccessibleInterface *createForAnnouncement(const QString &className, QObject *object) {
    if (className != u"Announcement")
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget *>(object), QAccessible::Notification);
}

} // namespace

// An object for each: in one that is shared, later words would be read in place of the earlier.
void Announcement::make(const QString &words, QWidget *place) {
    QAccessible::installFactory(createForAnnouncement);
    auto *announcement = new Announcement(words, place);
    announcement->show();
}

void Announcement::showIn(QLabel &label, const QString &words) {
    label.setText(words);
    make(words, label.window());
}

Announcement::Announcement(const QString &words, QWidget *place) : QWidget(place) {
    setAccessibleName(words);
    setFixedSize(0, 0);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Announcement::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    if (!event->spontaneous())
        QTimer::singleShot(stay, this, &QObject::deleteLater);
}

// Or it would be spoken again when the place shows again.
void Announcement::hideEvent(QHideEvent *event) {
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        deleteLater();
}

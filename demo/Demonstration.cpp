// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "demo/Demonstration.h"

#include "grid/GridColumns.h"

#include "ui_MainWindow.h"

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>
#include <QLocale>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPixmap>

#include <cstdio>

namespace {

constexpr double boxOffset = 10;              // pixels
const QString padSize = QStringLiteral("64"); // KiB, the size of the demonstration's chip

void sendMouse(QWidget *target, QEvent::Type type, Qt::MouseButtons held) {
    // Where a check box has its box; its label may be shorter than it is wide.
    const QPointF place(boxOffset, target->height() / 2.0);
    QMouseEvent event(type, place, target->mapToGlobal(place), Qt::LeftButton, held,
                      Qt::NoModifier);
    QApplication::sendEvent(target, &event);
}

} // namespace

Demonstration::Demonstration(VelmWindow &velm) : velm_(velm) {
    settle();
}

bool Demonstration::readComposeWriteVerify() {
    const bool hasRead = read();
    const bool composed = composeFromRead();
    return writeAndVerify() && hasRead && composed;
}

bool Demonstration::read() {
    const bool good = operation(velm_.window().controls().btn_read, QStringLiteral("Read"));
    const qsizetype length = lengthOf(velm_.delegate().state().read_from_chip_data);
    return report(length > 0,
                  QStringLiteral("%1 bytes in the grid").arg(QLocale().toString(length))) &&
           good;
}

bool Demonstration::composeFromRead() {
    Ui::MainWindow &c = velm_.window().controls();
    c.tabview->selectTabViewItem(burnTabIdentifier());
    if (!c.btn_combine_read_data->isChecked())
        press(c.btn_combine_read_data);
    type(c.padToTextField, padSize);
    if (!c.btn_pad->isChecked())
        press(c.btn_pad);
    settle();
    const qsizetype length = lengthOf(velm_.delegate().state().output_data);
    return report(length > 0, QStringLiteral("%1 bytes to burn").arg(QLocale().toString(length)));
}

bool Demonstration::writeAndVerify() {
    Ui::MainWindow &c = velm_.window().controls();
    const bool written = operation(c.btn_write, QStringLiteral("Write"));
    return operation(c.btn_verify, QStringLiteral("Verify")) && written;
}

bool Demonstration::savePicture(const QString &path) {
    settle();
    return velm_.window().grab().save(path);
}

bool Demonstration::operation(QAbstractButton *button, const QString &name) {
    press(button);
    settle();
    const QList<RunRecord> &runs = velm_.runs();
    const bool good =
        !runs.isEmpty() && runs.last().outcome.verdict == RunOutcome::Verdict::Succeeded;
    return report(good, name + QStringLiteral(": ") +
                            velm_.window().controls().messageLine->toPlainText());
}

void Demonstration::press(QAbstractButton *button) {
    sendMouse(button, QEvent::MouseButtonPress, Qt::LeftButton);
    sendMouse(button, QEvent::MouseButtonRelease, Qt::NoButton);
}

// Without key events: on a display without a keyboard the toolkit has nowhere to take them from.
void Demonstration::type(QLineEdit *field, const QString &text) {
    field->setFocus();
    field->selectAll();
    field->insert(text);
    field->clearFocus();
}

void Demonstration::choose(const QString &text) {
    for (const QMenu *menu : velm_.window().menuBar()->findChildren<QMenu *>())
        for (QAction *entry : menu->actions())
            if (entry->text().remove(u'&') == text)
                entry->trigger();
    settle();
}

bool Demonstration::waitUntil(const std::function<bool()> &happened) {
    const QDeadlineTimer deadline(std::chrono::seconds(10));
    while (!happened() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 100);
    return happened();
}

void Demonstration::settle() {
    QCoreApplication::processEvents();
    velm_.window().controls().textView->flush();
    QCoreApplication::processEvents();
}

bool Demonstration::report(bool good, const QString &what) {
    std::printf("%s  %s\n", good ? "ok    " : "FAILED", qPrintable(what));
    std::fflush(stdout);
    return good;
}

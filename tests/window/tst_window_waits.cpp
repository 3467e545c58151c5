// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/FileLock.h"
#include "settings/SettingsKeys.h"
#include "support/FailingCalls.h"
#include "window/WindowFixture.h"

#include <QPushButton>

#include <functional>

/// Another program that holds the files holds the window up for a tenth of a second at most,
/// however many values one act of the user changes.
class TestWindowWaits : public QObject {
    Q_OBJECT

private slots:
    void init();
    void radioButton();
    void paddingToTheChip();
    void choosingATool();
    void openingABinary();

private:
    /// The button beside the messages.
    QPushButton *offer() const;
    /// Does \a act, which writes something, while another program holds what the window writes.
    void actWaitsBriefly(const std::function<void()> &act) const;

    std::unique_ptr<WindowFixture> velm_;
};

namespace {

constexpr double longestMilliseconds = 100;

} // namespace

void TestWindowWaits::init() {
    velm_ = std::make_unique<WindowFixture>();
}

QPushButton *TestWindowWaits::offer() const {
    return velm_->controls().messageLine->findChild<QPushButton *>();
}

void TestWindowWaits::actWaitsBriefly(const std::function<void()> &act) const {
    const auto settings = FileLock::take(velm_->path(QStringLiteral("velm.conf")), {});
    const auto memory = FileLock::take(velm_->path(QStringLiteral("state.conf")), {});
    const double before = millisecondsSlept();
    act();
    const double wait = millisecondsSlept() - before;
    QVERIFY(settings && memory);
    QVERIFY2(wait > 0 && wait <= longestMilliseconds, qPrintable(QString::number(wait)));
}

void TestWindowWaits::radioButton() {
    velm_->start();
    actWaitsBriefly([&] { velm_->click(velm_->controls().btn_pad_00); });
    QVERIFY(velm_->settings().boolValue(settingsKeys::pad_00));
    QVERIFY(!velm_->settings().boolValue(settingsKeys::pad_ff));
}

void TestWindowWaits::paddingToTheChip() {
    velm_->useTool("echo 'Incorrect file size: 5 (needed 2048, use -s/S to ignore)' >&2; exit 1");
    velm_->settings().setValue(settingsKeys::binary,
                               velm_->write(QStringLiteral("rom.bin"), "bytes"));
    velm_->start();
    velm_->click(velm_->controls().btn_write);
    QVERIFY2(offer(), qPrintable(velm_->message()));
    actWaitsBriefly([&] { velm_->click(offer()); });
    QVERIFY(velm_->settings().boolValue(settingsKeys::pad));
    QCOMPARE(velm_->settings().stringValue(settingsKeys::pad_to), QStringLiteral("2"));
}

void TestWindowWaits::choosingATool() {
    velm_->setTool(velm_->path(QStringLiteral("no such tool")));
    velm_->start();
    velm_->click(velm_->controls().btn_read);
    QVERIFY2(offer(), qPrintable(velm_->message()));
    velm_->panels.answer = QStringLiteral("/opt/minipro");
    actWaitsBriefly([&] { velm_->click(offer()); });
    QCOMPARE(velm_->settings().stringValue(settingsKeys::miniproLocation), velm_->panels.answer);
}

void TestWindowWaits::openingABinary() {
    velm_->start();
    velm_->panels.answer = velm_->write(QStringLiteral("rom.bin"), "bytes");
    actWaitsBriefly([&] { velm_->click(velm_->controls().btn_open); });
    QCOMPARE(velm_->settings().stringValue(settingsKeys::binary), velm_->panels.answer);
}

QTEST_MAIN(TestWindowWaits)
#include "tst_window_waits.moc"

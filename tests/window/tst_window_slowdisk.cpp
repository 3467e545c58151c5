// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/HeldDisk.h"
#include "window/EditingSteps.h"

#include <cerrno>

/// A disk that takes nothing holds up nothing but what the user saves.
class TestWindowSlowDisk : public QObject {
    Q_OBJECT

private slots:
    void init();
    void typing_goesOn();
    void editing_doesNotAskTheDisk();
    void closing_goesOn();
    void aRefusalThatComesLater_isSaid();

private:
    QString storedDevice() const {
        return SettingsStore(velm_->path(QStringLiteral("velm.conf")))
            .stringValue(settingsKeys::device);
    }

    std::unique_ptr<WindowFixture> velm_;
};

void TestWindowSlowDisk::init() {
    velm_ = std::make_unique<WindowFixture>();
    showTwentyBytes(*velm_);
}

void TestWindowSlowDisk::typing_goesOn() {
    const HeldDisk disk;
    QLineEdit *device = velm_->controls().uaTextField;
    device->clear();
    QString typed;
    for (const char letter : {'2', '7', 'C', '6', '4'}) {
        QTest::keyClick(device, letter);
        typed += QLatin1Char(letter);
        QCOMPARE(storedDevice(), typed);
    }
    QTRY_COMPARE(disk.calls(), 1);
    velm_->click(velm_->controls().check_skipErase);
    QCOMPARE(velm_->settings().boolValue(settingsKeys::skipErase), true);
    QCOMPARE(disk.calls(), 1);
}

void TestWindowSlowDisk::editing_doesNotAskTheDisk() {
    const HeldDisk disk;
    enter(*velm_, 0, 1, QStringLiteral("7F"));
    QCOMPARE(onDisk(*velm_), QByteArray("\x7f"
                                        "123456789ABCDEFGHIJ"));
    QCOMPARE(disk.calls(), 0);
}

void TestWindowSlowDisk::closing_goesOn() {
    const HeldDisk disk;
    velm_->settings().setValue(settingsKeys::device, QStringLiteral("27C64"));
    velm_->end();
    QCOMPARE(storedDevice(), QStringLiteral("27C64"));
}

void TestWindowSlowDisk::aRefusalThatComesLater_isSaid() {
    HeldDisk disk;
    velm_->settings().setValue(settingsKeys::device, QStringLiteral("27C64"));
    QTRY_COMPARE(disk.calls(), 1);
    disk.release(EIO);
    QTRY_VERIFY2(velm_->message().contains(u"The settings hold until VELM ends"),
                 qPrintable(velm_->message()));
}

QTEST_MAIN(TestWindowSlowDisk)
#include "tst_window_slowdisk.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/FilePanels.h"

#include "support/FailingCalls.h"
#include "support/FileHelpers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

/// The desktop's save panel, answered by its controls.
class TestDesktopFilePanels : public QObject {
    Q_OBJECT

private slots:
    void init();
    void nameWithoutEnding_getsTheFirst();
    void nameWithAnEnding_staysAsItIs();
    void fileWithoutEnding_isReplacedWhenConfirmed();
    void fileThatTheEndingMakes_isAskedAbout_data();
    void fileThatTheEndingMakes_isAskedAbout();
    void fileThatCannotBeSeenJustNow_isAskedAbout();
    void beginningOfSeveralNames_staysAsItIs();
    void lockOfAllPrograms_isNotWaitedFor();
    void lookOfOtherPrograms_isTaken();
    void look_staysFromPanelToPanel();

private:
    QString path(const QString &name) const { return folder_->filePath(name); }
    void begin(bool isWholeName = true);
    /// Types \a name into the panel that is open and presses its button. A question is answered
    /// with \a answer; gives how many there were.
    int enter(const QString &name, QMessageBox::StandardButton answer = QMessageBox::NoButton);
    /// Closes the panel that is open without a choice.
    void cancel();
    QFileDialog *panel() const { return window_->findChild<QFileDialog *>(); }

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<QTemporaryDir> configuration_; ///< where the toolkit's own settings are
    std::unique_ptr<QWidget> window_;
    std::unique_ptr<DesktopFilePanels> panels_;
    QStringList chosen_;
};

void TestDesktopFilePanels::init() {
    folder_ = std::make_unique<QTemporaryDir>();
    configuration_ = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, configuration_->path());
    panels_ = std::make_unique<DesktopFilePanels>();
    window_ = std::make_unique<QWidget>();
    window_->show();
    chosen_.clear();
}

void TestDesktopFilePanels::begin(bool isWholeName) {
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Save;
    request.folder = folder_->path();
    request.typeName = QStringLiteral("Binary images");
    request.extensions = {QStringLiteral("bin"), QStringLiteral("rom")};
    request.isWholeName = isWholeName;
    panels_->begin(window_.get(), request, [this](const QString &path) { chosen_ << path; });
    QVERIFY(panel());
}

int TestDesktopFilePanels::enter(const QString &name, QMessageBox::StandardButton answer) {
    auto *field = panel()->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    field->clear();
    QTest::keyClicks(field, name);
    int questions = 0;
    QTimer clock;
    connect(&clock, &QTimer::timeout, this, [&] {
        if (auto *question = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            ++questions;
            question->button(answer)->click();
        }
    });
    clock.start();
    panel()->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Save)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return questions;
}

void TestDesktopFilePanels::cancel() {
    panel()->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!panel());
}

void TestDesktopFilePanels::nameWithoutEnding_getsTheFirst() {
    begin();
    QCOMPARE(enter(QStringLiteral("firmware")), 0);
    QCOMPARE(chosen_, QStringList(path(QStringLiteral("firmware.bin"))));
    QVERIFY(!panel());
}

void TestDesktopFilePanels::nameWithAnEnding_staysAsItIs() {
    begin();
    QCOMPARE(enter(QStringLiteral("firmware.dump")), 0);
    QCOMPARE(chosen_, QStringList(path(QStringLiteral("firmware.dump"))));
}

void TestDesktopFilePanels::fileWithoutEnding_isReplacedWhenConfirmed() {
    QVERIFY(writeWholeFile(path(QStringLiteral("firmware")), "older"));
    begin();
    QCOMPARE(enter(QStringLiteral("firmware"), QMessageBox::Yes), 1);
    QCOMPARE(chosen_, QStringList(path(QStringLiteral("firmware"))));
}

void TestDesktopFilePanels::fileThatTheEndingMakes_isAskedAbout_data() {
    QTest::addColumn<bool>("isReplaced");
    QTest::newRow("and replaced") << true;
    QTest::newRow("and kept") << false;
}

void TestDesktopFilePanels::fileThatTheEndingMakes_isAskedAbout() {
    QFETCH(bool, isReplaced);
    QVERIFY(writeWholeFile(path(QStringLiteral("firmware.bin")), "older"));
    begin();
    QCOMPARE(enter(QStringLiteral("firmware")), 0);
    QCOMPARE(chosen_, QStringList());
    QVERIFY(panel());
    QCOMPARE(panel()->selectedFiles(), QStringList(path(QStringLiteral("firmware.bin"))));
    QCOMPARE(enter(QStringLiteral("firmware.bin"), isReplaced ? QMessageBox::Yes : QMessageBox::No),
             1);
    QCOMPARE(chosen_,
             isReplaced ? QStringList(path(QStringLiteral("firmware.bin"))) : QStringList());
}

void TestDesktopFilePanels::fileThatCannotBeSeenJustNow_isAskedAbout() {
    QVERIFY(writeWholeFile(path(QStringLiteral("firmware.bin")), "older"));
    bool hasStruck = true;
    for (int call = 1; hasStruck; ++call) {
        begin();
        auto *field = panel()->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        field->setText(QStringLiteral("firmware"));
        {
            const FailingCalls failing(call, FailingCalls::Mishap::Fails, EIO);
            emit panel()->fileSelected(path(QStringLiteral("firmware")));
            hasStruck = failing.hasStruck();
        }
        QVERIFY(!chosen_.contains(path(QStringLiteral("firmware.bin"))));
        qDeleteAll(window_->findChildren<QFileDialog *>());
    }
}

void TestDesktopFilePanels::beginningOfSeveralNames_staysAsItIs() {
    QVERIFY(writeWholeFile(path(QStringLiteral("firmware.bin")), "older"));
    begin(false);
    QCOMPARE(enter(QStringLiteral("firmware")), 0);
    QCOMPARE(chosen_, QStringList(path(QStringLiteral("firmware"))));
}

// It may be that of a program that was killed, on another machine that has the same folders.
void TestDesktopFilePanels::lockOfAllPrograms_isNotWaitedFor() {
    const QString lock = configuration_->filePath(QStringLiteral("QtProject.conf.lock"));
    QVERIFY(writeWholeFile(lock, "1\nvelm\nelsewhere\n\n\n"));
    const double before = millisecondsSlept();
    for (int panels = 0; panels < 2; ++panels) {
        begin();
        cancel();
    }
    QCOMPARE(millisecondsSlept() - before, 0.0);
    QCOMPARE(QDir(configuration_->path()).entryList(QDir::Files),
             QStringList(QStringLiteral("QtProject.conf.lock")));
}

void TestDesktopFilePanels::lookOfOtherPrograms_isTaken() {
    const QString shared = configuration_->filePath(QStringLiteral("QtProject.conf"));
    const QByteArray look = "[FileDialog]\nshortcuts=file:///opt\nsidebarWidth=90\nviewMode=List\n";
    QVERIFY(writeWholeFile(shared, look));
    begin();
    QCOMPARE(panel()->viewMode(), QFileDialog::List);
    QCOMPARE(panel()->sidebarUrls(), QList<QUrl>({QUrl(QStringLiteral("file:///opt"))}));
    cancel();
    QCOMPARE(readWholeFile(shared), look);
}

void TestDesktopFilePanels::look_staysFromPanelToPanel() {
    begin();
    QCOMPARE(panel()->viewMode(), QFileDialog::Detail);
    panel()->setViewMode(QFileDialog::List);
    cancel();
    begin();
    QCOMPARE(panel()->viewMode(), QFileDialog::List);
    QCOMPARE(panel()->directory().path(), folder_->path());
    cancel();
    const QByteArray look = panels_->look();
    panels_ = std::make_unique<DesktopFilePanels>();
    panels_->setLook(look);
    begin();
    QCOMPARE(panel()->viewMode(), QFileDialog::List);
}

QTEST_MAIN(TestDesktopFilePanels)
#include "tst_desktopfilepanels.moc"

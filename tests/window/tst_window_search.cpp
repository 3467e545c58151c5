// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "window/SearchSteps.h"

#include "devices/DeviceListView.h"
#include "devices/device_searcher.h"
#include "language/DeviceListing.h"
#include "settings/SettingsKeys.h"
#include "support/DoubleClick.h"
#include "tool/ScriptedMiniPro.h"

#include "ui_DeviceSearchPanel.h"

#include <QFile>
#include <QTimer>

/// The device search panel over the window.
class TestWindowSearch : public QObject {
    Q_OBJECT

private slots:
    void enterInTheTerm_searches();
    void confirming_makesTheSelectedNameTheDevice_data();
    void confirming_makesTheSelectedNameTheDevice();
    void doubleClickBelowTheList_confirmsWhatIsSelected_data();
    void doubleClickBelowTheList_confirmsWhatIsSelected();
    void cancelling_leavesTheDevice_data();
    void cancelling_leavesTheDevice();
    void emptyTerm_beepsAndKeepsListAndFocus();
    void results_areSplitAtEveryNewline_data();
    void results_areSplitAtEveryNewline();
    void results_ofASecondSearchReplaceTheFirst();
    void results_areNeverThoseOfAnEarlierSearch_data();
    void results_areNeverThoseOfAnEarlierSearch();
    void results_beyondALimitGiveAnEmptyList_data();
    void results_beyondALimitGiveAnEmptyList();
    void results_thatAreNoTextAreSaidToBeNone();
    void results_missingFileGivesAnEmptyList();
    void terms_reachTheToolAsOneWord_data();
    void terms_reachTheToolAsOneWord();
    void aToolThatWaits_canBeStopped_data();
    void aToolThatWaits_canBeStopped();
    void wordsOfAWaitingTool_areUnderstood_data();
    void wordsOfAWaitingTool_areUnderstood();
    void waitingTool_isRemarkedOnOnce();
    void noMatch_isSaidWithAProgrammerConnected();
    void aCustomDevice_offersToRemoveTheSuffix();
    void longAnswer_isShownWhole();
    void everySearch_keepsItsRunAndNoDescriptor();
    void everySearch_givesItsOutputBack();
    void panel_namesItsControls();
};

void TestWindowSearch::enterInTheTerm_searches() {
    WindowFixture velm;
    velm.start();
    const Panel panel(velm);
    QVERIFY(panel.dialog->isVisible());
    QCOMPARE(panel.dialog->windowModality(), Qt::WindowModal);
    QCOMPARE(panel.names(), QStringList());
    panel.searchFor(QStringLiteral("w27c512@"));
    QVERIFY(panel.names().contains(u"W27C512@DIP28"));
    QVERIFY(panel.dialog->isVisible());
    QVERIFY(panel.list->selectionModel()->selectedRows().isEmpty());
    QVERIFY(velm.log.lines.contains(u"\nminipro list has exited with status 0"));
    QCOMPARE(velm.log.startingWith(QStringLiteral("launching ")), QStringList());
    QCOMPARE(velm.controls().textView->storedText(), QString());
}

void TestWindowSearch::confirming_makesTheSelectedNameTheDevice_data() {
    QTest::addColumn<QString>("way");
    for (const char *way : {"OK", "double-click", "Enter"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestWindowSearch::confirming_makesTheSelectedNameTheDevice() {
    QFETCH(QString, way);
    WindowFixture velm;
    velm.useTool("printf 'A\\nB with a blank \\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    panel.select(1);
    const QPoint place = panel.list->visualRect(panel.list->model()->index(1, 0)).center();
    if (way == QStringLiteral("OK"))
        velm.click(panel.ok);
    else if (way == QStringLiteral("Enter"))
        QTest::keyClick(panel.list, Qt::Key_Return);
    else
        doubleClick(panel.list->viewport(), place);
    QTRY_VERIFY(!panel.dialog->isVisible());
    velm.settle();
    QCOMPARE(velm.settings().stringValue(settingsKeys::device), QStringLiteral("B with a blank "));
    QCOMPARE(velm.controls().uaTextField->text(), QStringLiteral("B with a blank "));
    QCOMPARE(velm.log.count(QStringLiteral("doubleClick:")),
             way == QStringLiteral("double-click") ? 1 : 0);
}

void TestWindowSearch::doubleClickBelowTheList_confirmsWhatIsSelected_data() {
    QTest::addColumn<int>("selected");
    QTest::addColumn<QString>("device");
    QTest::newRow("nothing leaves the device") << -1 << QStringLiteral("W27C512@DIP28");
    QTest::newRow("a row") << 1 << QStringLiteral("B");
}

void TestWindowSearch::doubleClickBelowTheList_confirmsWhatIsSelected() {
    QFETCH(int, selected);
    QFETCH(QString, device);
    WindowFixture velm;
    velm.useTool("printf 'A\\nB\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    if (selected >= 0)
        panel.select(selected);
    const QPoint below(20, panel.list->viewport()->height() - 5);
    doubleClick(panel.list->viewport(), below);
    QTRY_VERIFY(!panel.dialog->isVisible());
    velm.settle();
    QCOMPARE(velm.settings().stringValue(settingsKeys::device), device);
}

void TestWindowSearch::cancelling_leavesTheDevice_data() {
    QTest::addColumn<QString>("way");
    for (const char *way : {"Cancel", "Escape", "close"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestWindowSearch::cancelling_leavesTheDevice() {
    QFETCH(QString, way);
    WindowFixture velm;
    velm.useTool("printf 'A\\nB\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    panel.select(1);
    if (way == QStringLiteral("Cancel"))
        velm.click(panel.cancel);
    else if (way == QStringLiteral("Escape"))
        QTest::keyClick(panel.list, Qt::Key_Escape);
    else
        panel.dialog->close();
    QVERIFY(!panel.dialog->isVisible());
    velm.settle();
    QCOMPARE(velm.settings().stringValue(settingsKeys::device), QStringLiteral("W27C512@DIP28"));
}

void TestWindowSearch::emptyTerm_beepsAndKeepsListAndFocus() {
    WindowFixture velm;
    velm.useTool("printf 'A\\nB\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    panel.searchFor(QString());
    QCOMPARE(velm.beeps, 1);
    QCOMPARE(panel.names(), QStringList({QStringLiteral("A"), QStringLiteral("B")}));
    QCOMPARE(QApplication::focusWidget(), panel.term);
    QVERIFY(!panel.remark->text().isEmpty());
}

void TestWindowSearch::results_areSplitAtEveryNewline_data() {
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<int>("pieces");
    const QStringList ab = {QStringLiteral("A"), QStringLiteral("B")};
    QTest::newRow("an empty line") << QByteArray("A\\n\\nB\\n") << ab << 4;
    QTest::newRow("CR LF") << QByteArray("A\\r\\nB\\r\\n") << ab << 5;
    QTest::newRow("no final line break") << QByteArray("A\\nB") << ab << 2;
    QTest::newRow("vertical tab and form feed") << QByteArray("A\\013B\\014") << ab << 3;
    QTest::newRow("trailing blanks stay")
        << QByteArray("A \\n") << QStringList(QStringLiteral("A ")) << 2;
    QTest::newRow("duplicates stay, in their order")
        << QByteArray("B\\nA\\nB\\n")
        << QStringList({QStringLiteral("B"), QStringLiteral("A"), QStringLiteral("B")}) << 4;
    QTest::newRow("a NUL") << QByteArray("A\\000C\\nB\\n")
                           << QStringList(
                                  {QString(QStringLiteral("A") + QChar(0) + QStringLiteral("C")),
                                   QStringLiteral("B")})
                           << 3;
    QTest::newRow("nothing") << QByteArray("") << QStringList() << 1;
    QTest::newRow("not UTF-8") << QByteArray("A\\377\\n") << QStringList() << 0;
}

void TestWindowSearch::results_areSplitAtEveryNewline() {
    QFETCH(QByteArray, answer);
    QFETCH(QStringList, names);
    QFETCH(int, pieces);
    WindowFixture velm;
    velm.useTool("printf '" + answer + "'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.names(), names);
    QCOMPARE(velm.log.count(QStringLiteral("list has returned:%1").arg(pieces)), 1);
    QCOMPARE(velm.log.count(QStringLiteral("dataArray has:%1").arg(names.size())), 1);
}

void TestWindowSearch::results_ofASecondSearchReplaceTheFirst() {
    WindowFixture velm;
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("W27C512@"));
    panel.searchFor(QStringLiteral("74138"));
    QVERIFY(!panel.names().isEmpty());
    for (const QString &name : panel.names())
        QVERIFY2(name.contains(u"74138"), qPrintable(name));
}

void TestWindowSearch::results_areNeverThoseOfAnEarlierSearch_data() {
    QTest::addColumn<QByteArray>("shell");
    QTest::addColumn<bool>("stops");
    QTest::addColumn<QString>("remark");
    QTest::newRow("no shell") << QByteArray("/nowhere/sh") << false
                              << QStringLiteral("was not started");
    QTest::newRow("stopped before the tool begins")
        << QByteArray() << true << QStringLiteral("The search was stopped.");
}

// Until the shell comes to the tool, the file holds what an earlier search has found.
void TestWindowSearch::results_areNeverThoseOfAnEarlierSearch() {
    QFETCH(QByteArray, shell);
    QFETCH(bool, stops);
    QFETCH(QString, remark);
    WindowFixture velm;
    velm.useTool("echo A\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.names(), QStringList(QStringLiteral("A")));
    const QString waiting = velm.write(QStringLiteral("sh"), "#!/bin/sh\nexec sleep 60\n");
    QFile::setPermissions(waiting, QFile::ReadOwner | QFile::ExeOwner);
    qputenv("SHELL", stops ? QFile::encodeName(waiting) : shell);
    if (stops)
        QTimer::singleShot(0, panel.stop, &QAbstractButton::click);
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.names(), QStringList());
    QVERIFY2(panel.remark->text().contains(remark), qPrintable(panel.remark->text()));
}

void TestWindowSearch::results_beyondALimitGiveAnEmptyList_data() {
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<QString>("reason");
    QTest::newRow("bytes") << "truncate -s " + QByteArray::number(largestList + 1) +
                                  " temp_sr.bin\n"
                           << "it is larger than 8 MiB";
    QTest::newRow("lines") << "yes A | head -n " + QByteArray::number(maxListLines) +
                                  " >temp_sr.bin\n"
                           << "it has more than 262,144 lines";
}

void TestWindowSearch::results_beyondALimitGiveAnEmptyList() {
    QFETCH(QByteArray, tool);
    QFETCH(QString, reason);
    WindowFixture velm;
    velm.useTool(tool);
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.names(), QStringList());
    QVERIFY(velm.log.lines.contains(u"list has returned:0"));
    QCOMPARE(panel.remark->text(),
             QStringLiteral("The list of devices could not be read: %1. Check the field "
                            "Programmer tool and search again.")
                 .arg(reason));
}

void TestWindowSearch::results_thatAreNoTextAreSaidToBeNone() {
    WindowFixture velm;
    velm.useTool("printf 'A\\377\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.remark->text(),
             QStringLiteral("The list of devices could not be read: Not valid UTF-8 text. Check "
                            "the field Programmer tool and search again."));
}

void TestWindowSearch::results_missingFileGivesAnEmptyList() {
    WindowFixture velm;
    velm.useTool("printf 'A\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    velm.settings().setValue(settingsKeys::temp_search_results_file,
                             velm.path(QStringLiteral("nowhere/temp_sr.bin")));
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.names(), QStringList());
    QVERIFY(velm.log.lines.contains(u"list has returned:0"));
    QVERIFY(!panel.remark->text().isEmpty());
}

void TestWindowSearch::terms_reachTheToolAsOneWord_data() {
    QTest::addColumn<QString>("term");
    QTest::newRow("plain") << QStringLiteral("27C");
    QTest::newRow("a blank") << QStringLiteral("27 C");
    QTest::newRow("quotes") << QStringLiteral("it's \"27\"");
    QTest::newRow("shell characters") << QStringLiteral("$(touch x); `id` | * ~ \\");
}

void TestWindowSearch::terms_reachTheToolAsOneWord() {
    QFETCH(QString, term);
    WindowFixture velm;
    velm.useTool("printf '%s\\n' \"$#\" \"$2\"\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(term);
    QCOMPARE(panel.names(), QStringList({QStringLiteral("2"), term}));
}

void TestWindowSearch::aToolThatWaits_canBeStopped_data() {
    QTest::addColumn<QString>("way");
    for (const char *way : {"Stop search", "Cancel", "Escape", "close"})
        QTest::newRow(way) << QString::fromLatin1(way);
}

void TestWindowSearch::aToolThatWaits_canBeStopped() {
    QFETCH(QString, way);
    WindowFixture velm;
    qputenv("MINIPRO_SIM_FAULT", "no-programmer");
    velm.start();
    const Panel panel(velm);
    QTimer::singleShot(0, &velm.velm(), [&] {
        if (way == QStringLiteral("Stop search"))
            velm.click(panel.stop);
        else if (way == QStringLiteral("Cancel"))
            velm.click(panel.cancel);
        else if (way == QStringLiteral("Escape"))
            QTest::keyClick(panel.term, Qt::Key_Escape);
        else
            panel.dialog->close();
    });
    panel.searchFor(QStringLiteral("27C"));
    QCOMPARE(panel.dialog->isVisible(), way == QStringLiteral("Stop search"));
    QVERIFY(velm.velm().work().isIdle());
    QVERIFY(panel.search->isEnabled());
    QVERIFY(!panel.stop->isEnabled());
}

void TestWindowSearch::wordsOfAWaitingTool_areUnderstood_data() {
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("remark");
    QTest::newRow("the menu, at once")
        << QByteArray("echo 'No device found. Which database do you want to display?' >&2\n"
                      "read answer\n")
        << QStringLiteral("stop the search, and start it again once a programmer is connected");
    QTest::newRow("silence, after two seconds")
        << QByteArray("read answer\n") << QStringLiteral("The tool is silent");
}

void TestWindowSearch::wordsOfAWaitingTool_areUnderstood() {
    QFETCH(QByteArray, script);
    QFETCH(QString, remark);
    WindowFixture velm;
    velm.useTool(script);
    velm.start();
    const Panel panel(velm);
    bool said = false;
    QObject::connect(velm.delegate().outlets.devicesearcher, &device_searcher::remark, panel.remark,
                     [&](const QString &sentence) {
                         if (!said && sentence.contains(remark)) {
                             said = true;
                             QTimer::singleShot(0, panel.stop, &QPushButton::click);
                         }
                     });
    panel.searchFor(QStringLiteral("27C"));
    QVERIFY(said);
    QVERIFY2(panel.remark->text().startsWith(u"The search was stopped."),
             qPrintable(panel.remark->text()));
}

void TestWindowSearch::waitingTool_isRemarkedOnOnce() {
    WindowFixture velm;
    velm.useTool("echo 'No device found. Which database do you want to display?' >&2\n"
                 "until test -e go-on; do sleep 0.01; done\n"
                 "echo more >&2; read answer\n");
    velm.start();
    const Panel panel(velm);
    const auto &searcher = *velm.delegate().outlets.devicesearcher;
    int remarks = 0;
    QObject::connect(&searcher, &device_searcher::remark, panel.remark, [&](const QString &words) {
        if (!words.contains(u"The tool waits"))
            return;
        ++remarks;
        velm.write(QStringLiteral("workspace/go-on"), QByteArray());
    });
    QObject::connect(&searcher, &device_searcher::runMade, panel.remark, [&](ScriptedMiniPro *run) {
        QObject::connect(run, &ScriptedMiniPro::said, panel.remark, [run, &panel] {
            if (run->collectedOutput().endsWith(u"more\n"))
                QTimer::singleShot(0, panel.stop, &QPushButton::click);
        });
    });
    panel.searchFor(QStringLiteral("27C"));
    QCOMPARE(remarks, 1);
}

void TestWindowSearch::noMatch_isSaidWithAProgrammerConnected() {
    WindowFixture velm;
    velm.useTool("printf 'Found TL866II+ 04.2.132 (0x284)\nUSB speed: 12Mbps (USB 1.1)\n' >&2\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("x"));
    QCOMPARE(panel.remark->text(), QStringLiteral("No device's name holds this term."));
}

void TestWindowSearch::aCustomDevice_offersToRemoveTheSuffix() {
    WindowFixture velm;
    velm.useTool("printf 'MYCHIP@DIP28(custom)\\n'\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("MY"));
    panel.select(0);
    velm.click(panel.ok);
    velm.settle();
    QCOMPARE(velm.settings().stringValue(settingsKeys::device),
             QStringLiteral("MYCHIP@DIP28(custom)"));
    auto *remove = velm.controls().messageLine->findChild<QPushButton *>();
    QVERIFY(remove && remove->isVisible());
    velm.click(remove);
    QCOMPARE(velm.controls().uaTextField->text(), QStringLiteral("MYCHIP@DIP28"));
    QVERIFY(!remove->isVisible());
}

void TestWindowSearch::longAnswer_isShownWhole() {
    WindowFixture velm;
    velm.useTool("seq -f 'CHIP%05g@DIP28' 32000; head -c 1048576 /dev/zero | tr '\\0' x\n");
    velm.start();
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("CHIP"));
    QCOMPARE(panel.list->model()->rowCount(), 32001);
    panel.list->scrollToBottom();
    panel.list->grab();
    QCOMPARE(panel.list->model()->index(31999, 0).data().toString(),
             QStringLiteral("CHIP32000@DIP28"));
}

void TestWindowSearch::everySearch_keepsItsRunAndNoDescriptor() {
    WindowFixture velm;
    velm.start();
    const Panel panel(velm);
    const auto open = [] {
        return QDir(QStringLiteral("/proc/self/fd"))
            .entryList(QDir::NoDotAndDotDot | QDir::System | QDir::Files)
            .size();
    };
    panel.searchFor(QString());
    const auto before = open();
    for (int search = 0; search < 1000; ++search)
        panel.searchFor(QString());
    QCOMPARE(open(), before);
    QCOMPARE(velm.delegate().outlets.devicesearcher->findChildren<ScriptedMiniPro *>().size(),
             1001);
    QCOMPARE(velm.beeps, 1001);
}

void TestWindowSearch::everySearch_givesItsOutputBack() {
    WindowFixture velm;
    velm.useTool("head -c 1048576 /dev/zero | tr '\\0' x >&2\n");
    velm.start();
    const Panel panel(velm);
    ScriptedMiniPro *made = nullptr;
    QObject::connect(velm.delegate().outlets.devicesearcher, &device_searcher::runMade,
                     panel.remark, [&made](ScriptedMiniPro *run) { made = run; });
    panel.searchFor(QStringLiteral("x"));
    QVERIFY(made);
    QCOMPARE(made->collectedOutput().capacity(), 0);
}

void TestWindowSearch::panel_namesItsControls() {
    WindowFixture velm;
    velm.start();
    const Panel panel(velm);
    QCOMPARE(panel.term->accessibleName(), QStringLiteral("Search term"));
    QCOMPARE(panel.search->accessibleName(), QStringLiteral("Search"));
    QCOMPARE(panel.stop->accessibleName(), QStringLiteral("Stop search"));
    QCOMPARE(panel.list->accessibleName(), QStringLiteral("Devices"));
    QCOMPARE(panel.ok->accessibleName(), QStringLiteral("OK"));
    QCOMPARE(panel.cancel->accessibleName(), QStringLiteral("Cancel"));
    for (const QPushButton *button : panel.dialog->findChildren<QPushButton *>())
        QVERIFY(!button->isDefault() && !button->autoDefault());
}

QTEST_MAIN(TestWindowSearch)
#include "tst_window_search.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/SettingsStore.h"
#include "widgets/KeyBinder.h"

#include <QInputMethod>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace {

int commits = 0;

} // namespace

// In place of the toolkit's own, which on some platforms ends the program where nothing has the
// focus, and on this one does nothing that could be seen.
void QInputMethod::commit() {
    ++commits;
}

/// What the input method is asked before a run.
class TestInputMethod : public QObject {
    Q_OBJECT

private slots:
    void init() { commits = 0; }
    void commit_isAskedOfWhoIsTyping();
    void commit_isNotAskedWhereNothingHasTheFocus();

private:
    QTemporaryDir folder_;
    SettingsStore settings_{folder_.filePath(QStringLiteral("velm.conf"))};
};

void TestInputMethod::commit_isAskedOfWhoIsTyping() {
    KeyBinder binder(settings_);
    QLineEdit field;
    field.show();
    field.activateWindow();
    field.setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&field));
    QVERIFY(QGuiApplication::focusObject());
    binder.commitPending();
    QCOMPARE(commits, 1);
}

void TestInputMethod::commit_isNotAskedWhereNothingHasTheFocus() {
    KeyBinder binder(settings_);
    QCOMPARE(QGuiApplication::focusObject(), nullptr);
    binder.commitPending();
    QCOMPARE(commits, 0);
}

QTEST_MAIN(TestInputMethod)
#include "tst_inputmethod.moc"

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/AddressSpaceLimit.h"
#include "window/WindowFixture.h"

#include <QClipboard>
#include <QGuiApplication>

#include <functional>
#include <memory>

/// A full console whose text finds no memory to go elsewhere.
class TestWindowConsoleMemory : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void copyingAll_keepsTheClipboard();
    void copyingTheSelection_isSaidToLackMemory();
    void saving_leavesTheFileThatWasThere();
    void cleanup();

private:
    /// Does \a work while there is much less memory than the text takes.
    static void withoutMemory(const std::function<void()> &work) {
        const AddressSpaceLimit limit(rlim_t(8) << 20);
        work();
    }

    std::unique_ptr<WindowFixture> velm_;
};

void TestWindowConsoleMemory::initTestCase() {
    if (!AddressSpaceLimit::works())
        QSKIP("the sanitizer needs the address space");
}

void TestWindowConsoleMemory::init() {
    velm_ = std::make_unique<WindowFixture>();
    velm_->start();
    const QString line = QString(511, u'x') + u'\n';
    velm_->controls().textView->appendText(line.repeated(32'768));
    velm_->controls().textView->flush();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
}

void TestWindowConsoleMemory::cleanup() {
    velm_.reset();
}

void TestWindowConsoleMemory::copyingAll_keepsTheClipboard() {
    withoutMemory([this] { velm_->controls().textView->copyAllAction()->trigger(); });
    QCOMPARE(velm_->message(),
             QStringLiteral("Warning: There is not enough memory to copy so much."));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("before"));
}

void TestWindowConsoleMemory::copyingTheSelection_isSaidToLackMemory() {
    velm_->controls().textView->selectAll();
    withoutMemory(
        [this] { QTest::keyClick(velm_->controls().textView, Qt::Key_C, Qt::ControlModifier); });
    QCOMPARE(velm_->message(),
             QStringLiteral("Warning: There is not enough memory to copy so much."));
}

void TestWindowConsoleMemory::saving_leavesTheFileThatWasThere() {
    const QString path = velm_->write(QStringLiteral("console.txt"), "before");
    velm_->panels.answer = path;
    withoutMemory([this] { velm_->controls().textView->saveAction()->trigger(); });
    QVERIFY2(velm_->message().contains(u"could not be written: Cannot allocate memory"),
             qPrintable(velm_->message()));
    QCOMPARE(WindowFixture::bytesOf(path), QByteArray("before"));
}

QTEST_MAIN(TestWindowConsoleMemory)
#include "tst_window_consolememory.moc"

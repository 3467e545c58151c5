// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridModel.h"
#include "support/AllocatedBytes.h"
#include "window/EditingSteps.h"
#include "window/SearchSteps.h"

#include <QDir>
#include <QFile>

#include <malloc.h>
#include <unistd.h>

/// A long day in one process: 500 runs, 2,000 edits and 100 searches, a fifth of it under the
/// sanitizers, take no descriptor, no thread and no memory with them.
class TestSoak : public QObject {
    Q_OBJECT

private slots:
    void aLongDay_leavesNothingBehind();
    void runsThatPrintAMegabyte_keepLittleOfIt();
};

namespace {

constexpr int imageSize = 4096;

/// What may be allocated in the end that was not at the start, whatever the work: buffers keep the
/// room that they once had, and caches fill.
constexpr qint64 slack = qint64(256) << 10;
/// What a run leaves: itself and its record, which are kept for as long as the program runs.
constexpr qint64 keptOfARun = qint64(3) << 10;
/// What is in memory is to stay below this, after 10,000 runs as well.
constexpr qint64 maxInMemory = qint64(100) << 20;

/// Reads, writes and lists in an instant: the shell starts no other program.
const QByteArray tool = R"(
case " $* " in
*" -r "*) while [ "$1" != -r ]; do shift; done
      printf 'CHIP!' >"$2"; echo 'Reading Code...  0.47Sec  OK' >&2 ;;
*" -w "*) echo 'Writing Code...  1.29Sec  OK' >&2; echo 'Verification OK' >&2 ;;
*)  printf 'W27C512@DIP28\nW27C010@DIP32\n' ;;
esac
)";

// The sanitizers keep freed memory and find what is lost themselves, in the first steps as in the
// last: there it is a short day.
#ifdef __SANITIZE_ADDRESS__
constexpr bool memoryIsMeasured = false;
constexpr int shorter = 5; // times
#else
constexpr bool memoryIsMeasured = true;
constexpr int shorter = 1;
#endif

/// What a process holds.
struct Holdings {
    qsizetype descriptors = 0;
    qsizetype threads = 0;
};

qsizetype entriesOf(const QString &folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
}

/// What is in memory of this process.
qint64 residentBytes() {
    ::malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no /proc/self/statm");
    return file.readAll().split(' ').at(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

qsizetype descriptors() {
    return entriesOf(QStringLiteral("/proc/self/fd"));
}

qsizetype threads() {
    return entriesOf(QStringLiteral("/proc/self/task"));
}

/// A Read or a Write, in turn.
void run(WindowFixture &velm, int number) {
    const qsizetype before = velm.velm().runs().size();
    velm.click(number % 2 == 0 ? velm.controls().btn_read : velm.controls().btn_write);
    QCOMPARE(velm.velm().runs().size(), before + 1);
    QCOMPARE(velm.velm().runs().last().status, 0);
    velm.controls().textView->clearAll();
    velm.settle();
}

/// An edit that is taken back and made again; now and then the image is composed anew.
void edit(WindowFixture &velm, int number) {
    constexpr int fromOneCompositionToTheNext = 100;
    if (number % fromOneCompositionToTheNext == 0) {
        velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
        velm.delegate().build_and_reload();
        velm.settle();
    }
    GridModel *grid = velm.controls().tableview->gridModel();
    const QByteArray before = *velm.state().output_data;
    const QString value =
        number / fromOneCompositionToTheNext % 2 == 0 ? QStringLiteral("7A") : QStringLiteral("79");
    QVERIFY(grid->setData(grid->index(number % fromOneCompositionToTheNext, 1), value));
    const QByteArray after = *velm.state().output_data;
    QVERIFY(after != before);
    velm.delegate().edits().undo();
    QCOMPARE(*velm.state().output_data, before);
    velm.delegate().edits().redo();
    QCOMPARE(*velm.state().output_data, after);
    QCOMPARE(onDisk(velm), after);
    velm.settle();
}

void search(WindowFixture &velm, int /*number*/) {
    const Panel panel(velm);
    panel.searchFor(QStringLiteral("w27"));
    QCOMPARE(panel.names(),
             QStringList({QStringLiteral("W27C512@DIP28"), QStringLiteral("W27C010@DIP32")}));
    velm.click(panel.cancel);
    velm.settle();
}

/// A run whose output stays on the console, as far as that has room.
void printAMegabyte(WindowFixture &velm, int /*number*/) {
    velm.click(velm.controls().btn_read);
    QCOMPARE(velm.velm().runs().last().status, 1);
    velm.log.take();
    velm.settle();
}

struct Load {
    void (*step)(WindowFixture &velm, int number);
    int steps;
    int warmUp;       ///< steps beforehand, which fill what is bounded
    qint64 allowance; ///< what the steps may leave allocated, in bytes
};

/// The process as a whole, with \a resident bytes in memory, keeps its bound, whatever it grew by.
void verifyWhatIsInMemory(qint64 resident) {
    if (memoryIsMeasured)
        QVERIFY2(resident < maxInMemory, qPrintable(QString::number(resident)));
}

/// Carries \a load; nothing is left of it that was not there at the start, when the process had
/// \a resting.
void endure(WindowFixture &velm, const Load &load, const Holdings &resting) {
    for (int number = 0; number < load.warmUp; ++number)
        load.step(velm, number);
    velm.log.take();
    const qint64 before = allocatedBytes();
    for (int number = 0; number < load.steps && !QTest::currentTestFailed(); ++number)
        load.step(velm, number);
    velm.log.take();
    // The pipes of a run are closed once nobody holds their other ends, which may be after it.
    QTRY_COMPARE(descriptors(), resting.descriptors);
    QTRY_COMPARE(threads(), resting.threads);
    const qint64 grown = allocatedBytes() - before;
    if (memoryIsMeasured)
        QVERIFY2(grown <= load.allowance, qPrintable(QStringLiteral("%1 bytes more").arg(grown)));
}

} // namespace

void TestSoak::aLongDay_leavesNothingBehind() {
    constexpr Load day[] = {{run, 500 / shorter, 50, 500 * keptOfARun + slack},
                            {edit, 2000 / shorter, 200, slack},
                            {search, 100 / shorter, 10, 100 * keptOfARun + slack}};
    WindowFixture velm;
    velm.useTool(tool);
    velm.settings().setValue(settingsKeys::binary,
                             velm.write(QStringLiteral("rom.bin"), QByteArray(imageSize, '0')));
    velm.start();
    velm.settle();
    const Holdings resting = {descriptors(), threads()};
    for (const Load &load : day)
        endure(velm, load, resting);
    verifyWhatIsInMemory(residentBytes());
}

// VELM_RUNS says how many. 10,000 take most of an hour, and QTEST_FUNCTION_TIMEOUT (milliseconds)
// must leave them that.
void TestSoak::runsThatPrintAMegabyte_keepLittleOfIt() {
    constexpr int usualRuns = 20;
    constexpr int warmUp = 20; // by then the console is full
    const int wanted = qEnvironmentVariableIntValue("VELM_RUNS");
    const int runs = wanted > 0 ? wanted : usualRuns;
    WindowFixture velm;
    velm.useTool("yes 'Reading Code...  0.47Sec' | head -c 1000000; false\n");
    velm.start();
    velm.settle();
    const Holdings resting = {descriptors(), threads()};
    endure(velm, {printAMegabyte, runs, warmUp, runs * keptOfARun + slack}, resting);
    const qint64 resident = residentBytes();
    qInfo("%lld bytes in memory after %d runs", static_cast<long long>(resident), runs);
    verifyWhatIsInMemory(resident);
}

QTEST_MAIN(TestSoak)
#include "tst_soak.moc"

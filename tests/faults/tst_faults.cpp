// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "support/FailingCalls.h"
#include "window/EditingSteps.h"

#include <QDir>
#include <QMap>

#include <cerrno>
#include <cstring>
#include <limits>
#include <map>

/// Everything that a user does, with one call to the system failing in it, or reading or writing
/// just a part: each in turn, until none is left. Besides, the same with another call that fails
/// right behind the first, such as one that was to clear up. Whatever fails, the program goes on,
/// no file is torn, settings stay, what was not done is said, and a chip gets what is shown or the
/// user is told that it would not.
///
/// Each function fails with the errors that it is most likely to meet; with VELM_FAULTS=all it does
/// with all of them, which takes several times as long.
class TestFaults : public QObject {
    Q_OBJECT

private slots:
    void eachFunctionThatFails_isCalled();
    void nothingIsLost_data();
    void nothingIsLost();
    void nothingIsLostByTwoFaults_data();
    void nothingIsLostByTwoFaults();
    void nothingIsLostByShortCalls_data();
    void nothingIsLostByShortCalls();
};

namespace {

using Step = void (*)(WindowFixture &);
using Errors = QList<int>;
using Mishap = FailingCalls::Mishap;

/// What goes wrong in a step.
struct Trouble {
    QByteArray function;
    int error = 0;
    Mishap mishap = Mishap::Fails;
    /// How many calls behind it another one fails; 0 for none.
    int again = 0;
};

const QByteArray firstBinary = "0123456789ABCDEFGHIJ";
const QByteArray otherBinary = "another binary";
const QByteArray olderExport = "an older export";

/// Reads "CHIP!" and keeps what it is given to write.
const QByteArray tool = R"(
while [ $# -gt 0 ]; do
    case "$1" in
    -r) printf 'CHIP!' >"$2"; echo 'Reading Code...  0.47Sec  OK' >&2 ;;
    -w) cp -- "$2" "$BURNED"
        echo 'Writing Code...  1.29Sec  OK' >&2; echo 'Verification OK' >&2 ;;
    esac
    shift
done
)";

void start(WindowFixture &velm) {
    velm.start();
}

void read(WindowFixture &velm) {
    velm.click(velm.controls().btn_read);
}

void compose(WindowFixture &velm) {
    velm.click(velm.controls().btn_pad);
}

void edit(WindowFixture &velm) {
    enter(velm, 0, 1, QStringLiteral("7F"));
}

void grow(WindowFixture &velm) {
    enter(velm, 1, 4, QStringLiteral("'a longer text"));
}

void takeBackGrowth(WindowFixture &velm) {
    QTest::keyClick(&velm.velm().window(), Qt::Key_Z, Qt::ControlModifier);
}

void openAnother(WindowFixture &velm) {
    velm.panels.answer = velm.path(QStringLiteral("other.bin"));
    velm.click(velm.controls().btn_open);
}

void exportImage(WindowFixture &velm) {
    velm.panels.answer = velm.path(QStringLiteral("export.bin"));
    velm.click(velm.controls().btn_export_output);
}

void changeSetting(WindowFixture &velm) {
    velm.click(velm.controls().check_skipErase);
}

void burn(WindowFixture &velm) {
    velm.click(velm.controls().btn_write);
}

QVariantMap settingsIn(const SettingsStore &store) {
    QVariantMap values = settingsKeys::startupDefaults();
    values.insert(settingsKeys::binary, {});
    values.insert(settingsKeys::device, {});
    for (auto value = values.begin(); value != values.end(); ++value)
        *value = store.stringValue(value.key());
    return values;
}

/// One program in a folder of its own, in which one thing goes wrong.
class Day {
public:
    Day() {
        velm.write(QStringLiteral("rom.bin"), firstBinary);
        velm.write(QStringLiteral("other.bin"), otherBinary);
        velm.write(QStringLiteral("export.bin"), olderExport);
        qputenv("BURNED", QFile::encodeName(burnedPath()));
        velm.useTool(tool);
        velm.settings().setValue(settingsKeys::binary, velm.path(QStringLiteral("rom.bin")));
        velm.settings().setValue(settingsKeys::pad_to, QStringLiteral("1"));
    }

    /// Does \a step with \a trouble at call \a call; false if there were fewer calls.
    bool doFailing(Step step, const Trouble &trouble, int call) {
        if (step != start)
            begin();
        if (step == takeBackGrowth)
            grow(velm);
        stepDone = step;
        const QByteArray before = image();
        settingsBefore = settingsIn(velm.settings());
        messageBefore = step == start ? QString() : velm.message();
        // What looks at the outcome has no trouble.
        const bool wasStruck = doUnder(trouble, call);
        images = {before, image()};
        outcome = whatCameOut();
        hasToldOf = hasSpoken();
        return wasStruck;
    }

    /// What is wrong after that; empty if nothing is.
    QString complaint() {
        for (const QString &wrong :
             {inSilence(), inSettings(), inFiles(), inExport(), inBurning(), inClearingUp()})
            if (!wrong.isEmpty())
                return wrong;
        return {};
    }

    QByteArray struck;
    QMap<QByteArray, int> callsMade;

private:
    bool doUnder(const Trouble &trouble, int call) {
        FailingCalls failing(trouble.function, call, trouble.mishap, trouble.error);
        failing.failAgain(trouble.again);
        wasTwofold = trouble.again > 0;
        stepDone(velm);
        velm.settle();
        struck = failing.struckCall();
        callsMade = failing.callsMade();
        return failing.hasStruck();
    }

    void begin() {
        velm.start();
        velm.controls().tabview->selectTabViewItem(burnTabIdentifier());
        velm.settle();
    }

    QByteArray image() {
        const bool isThere = velm.hasStarted() && velm.state().output_data;
        return isThere ? *velm.state().output_data : QByteArray();
    }

    /// A sentence was said since the step began, and not that all went well.
    bool hasSpoken() {
        QStringList sentences = velm.message().split(u'\n', Qt::SkipEmptyParts);
        sentences.removeIf([this](const QString &sentence) {
            return sentence.startsWith(u"Done: ") || messageBefore.contains(sentence);
        });
        return !sentences.isEmpty();
    }

    /// What one can see of what was done: the image, the shown bytes, the files.
    QStringList whatCameOut() {
        const auto pictureOf = [](const QByteArray &bytes) {
            return QString::fromLatin1(bytes.toHex());
        };
        const ByteBuffer &read = velm.state().read_from_chip_data;
        return {pictureOf(image()),
                pictureOf(read ? *read : QByteArray()),
                velm.row(0),
                pictureOf(WindowFixture::bytesOf(velm.temporary(QStringLiteral("temp.bin")))),
                pictureOf(WindowFixture::bytesOf(burnedPath())),
                pictureOf(bytesOf(QStringLiteral("export.bin")))};
    }

    QString burnedPath() const { return velm.path(QStringLiteral("burned")); }

    /// The step comes out as on a day without trouble, or a sentence was said.
    QString inSilence() const {
        static std::map<Step, QStringList> known;
        if (known.find(stepDone) == known.end()) {
            Day day;
            day.doFailing(stepDone, {}, std::numeric_limits<int>::max());
            known[stepDone] = day.outcome;
        }
        return outcome == known[stepDone] || hasToldOf
                   ? QString()
                   : QStringLiteral("no word of what was not done: ") + outcome.join(u' ');
    }

    /// Every setting has the value of before or the one that the window shows, and if the file
    /// lacks that, a sentence says so.
    QString inSettings() {
        SettingsStore stored(velm.path(QStringLiteral("velm.conf")));
        if (stored.unreadFile())
            return QStringLiteral("the settings are taken for damaged");
        stored.registerDefaults(settingsKeys::startupDefaults());
        const QVariantMap now = settingsIn(stored);
        const QVariantMap shown = settingsIn(velm.settings());
        for (auto value = now.begin(); value != now.end(); ++value)
            if (*value != settingsBefore[value.key()] && *value != shown[value.key()])
                return QStringLiteral("%1 is %2").arg(value.key(), value->toString());
        return now == shown || hasSpoken()
                   ? QString()
                   : QStringLiteral("no word of a setting that is not kept");
    }

    QString inFiles() {
        if (bytesOf(QStringLiteral("rom.bin")) != firstBinary ||
            bytesOf(QStringLiteral("other.bin")) != otherBinary)
            return QStringLiteral("an opened file has changed");
        const QString handedOver = velm.temporary(QStringLiteral("temp.bin"));
        const QByteArray bytes = WindowFixture::bytesOf(handedOver);
        // An older image that cannot be removed is emptied, and that is said.
        const bool isEmptied = wasTwofold && bytes.isEmpty() && hasSpoken();
        if (QFile::exists(handedOver) && !images.contains(bytes) && !isEmptied)
            return QStringLiteral("the image file is torn");
        return strangers(QStringLiteral("."),
                         QStringLiteral("bench burned export.bin other.bin rom.bin state.conf "
                                        "tool.sh velm.conf workspace")) +
               strangers(QStringLiteral("workspace"),
                         QStringLiteral("temp.bin temp_read.bin temp_sr.bin temp_logtest.bin"));
    }

    /// The files in \a folder that are none of \a known.
    QString strangers(const QString &folder, const QString &known) const {
        QStringList names = QDir(velm.path(folder)).entryList(QDir::Files | QDir::Hidden);
        names.removeIf([&](const QString &name) { return known.split(u' ').contains(name); });
        if (wasTwofold || struck == "unlink")
            names.removeIf([](const QString &name) { return name.contains(u".velm-aside-"); });
        return names.isEmpty() ? QString() : QStringLiteral("left: ") + names.join(u' ');
    }

    /// What could not be cleared up goes at the next start, but for what stands in the user's
    /// own folders.
    QString inClearingUp() {
        if (unfinished().isEmpty())
            return {};
        velm.end();
        velm.start();
        const QStringList left = unfinished();
        return left.isEmpty() ? QString() : QStringLiteral("still left: ") + left.join(u' ');
    }

    QStringList unfinished() const {
        QStringList left;
        for (const char *folder : {".", "workspace"})
            left += QDir(velm.path(QLatin1String(folder)))
                        .entryList({QStringLiteral("*.velm-aside-*")}, QDir::Files | QDir::Hidden);
        left.removeIf([](const QString &name) { return name.startsWith(u"export.bin"); });
        return left;
    }

    QString inExport() {
        const QByteArray bytes = bytesOf(QStringLiteral("export.bin"));
        const bool wasAsked = !velm.panels.requests.isEmpty() &&
                              velm.panels.requests.last().kind == FilePanelRequest::Kind::Save;
        if (bytes != olderExport && bytes != image())
            return QStringLiteral("the export is torn");
        return wasAsked && bytes == olderExport && !hasSpoken()
                   ? QStringLiteral("no word of an export that failed")
                   : QString();
    }

    /// The next press of Write burns what is shown, or says why not.
    QString inBurning() {
        QFile::remove(burnedPath());
        burn(velm);
        velm.settle();
        if (!QFile::exists(burnedPath()))
            return velm.message().isEmpty() ? QStringLiteral("Write did nothing") : QString();
        return WindowFixture::bytesOf(burnedPath()) == image()
                   ? QString()
                   : QStringLiteral("something else was burned than is shown");
    }

    QByteArray bytesOf(const QString &name) const {
        return WindowFixture::bytesOf(velm.path(name));
    }

    WindowFixture velm;
    QList<QByteArray> images;
    QVariantMap settingsBefore;
    QString messageBefore;
    Step stepDone = nullptr;
    QStringList outcome;
    bool hasToldOf = false;
    bool wasTwofold = false;
};

Errors all() {
    return {EIO, ENOSPC, EROFS, EACCES, EMFILE, ENOMEM};
}

} // namespace

Q_DECLARE_METATYPE(Step)

namespace {

const QList<std::pair<const char *, Step>> steps = {
    {"start", start},      {"read", read},          {"compose", compose},
    {"edit", edit},        {"grow", grow},          {"undo", takeBackGrowth},
    {"open", openAnother}, {"export", exportImage}, {"set", changeSetting},
    {"burn", burn}};

const QList<std::pair<const char *, Errors>> functions = {
    {"open", {EACCES, EMFILE}},   {"write", {ENOSPC}},  {"pwrite", {ENOSPC}},   {"read", {EIO}},
    {"fdatasync", {EIO}},         {"fsync", {EIO}},     {"rename", {EROFS}},    {"link", {EACCES}},
    {"mmap", {ENOMEM}},           {"ftruncate", {EIO}}, {"unlink", {EROFS}},    {"mkdir", {EACCES}},
    {"flock", {EINTR}},           {"fchmod", {EPERM}},  {"close", {EIO}},       {"stat", {EACCES}},
    {"lstat", {EACCES}},          {"fstat", {EIO}},     {"realpath", {EACCES}}, {"fcntl", {EMFILE}},
    {"pthread_create", {EAGAIN}}, {"access", {EACCES}}, {"faccessat", {EACCES}}};

bool triesAll() {
    return qgetenv("VELM_FAULTS") == "all";
}

/// With VELM_FAULTS_HALF=1 or 2 every other step, so that two processes share them; else all.
auto stepsOfThisHalf() {
    const int half = qEnvironmentVariableIntValue("VELM_FAULTS_HALF");
    auto some = steps;
    qsizetype number = 0;
    some.removeIf([&](const auto &) { return half != 0 && number++ % 2 != half - 1; });
    return some;
}

/// In \a day nothing goes wrong.
void verifyCleanDay(Day &day, Step step) {
    QVERIFY(!day.doFailing(step, {}, std::numeric_limits<int>::max()));
    QCOMPARE(day.complaint(), QString());
}

/// How often \a step calls each function if nothing goes wrong.
const QMap<QByteArray, int> &callsMadeIn(Step step) {
    static std::map<Step, QMap<QByteArray, int>> known;
    auto calls = known.find(step);
    if (calls == known.end()) {
        Day day;
        verifyCleanDay(day, step);
        calls = known.emplace(step, day.callsMade).first;
    }
    return calls->second;
}

/// How many of these calls are of functions that \a name stands for.
int callsOf(Step step, const QByteArray &name) {
    const QMap<QByteArray, int> &made = callsMadeIn(step);
    int calls = 0;
    for (auto call = made.cbegin(); call != made.cend(); ++call)
        calls += standsFor(name, call.key()) ? *call : 0;
    return calls;
}

/// Does \a step with \a trouble at each of its calls in turn.
void tryEachCall(Step step, const Trouble &trouble) {
    const int calls = callsOf(step, trouble.function);
    bool wasStruck = true;
    for (int call = 1; wasStruck && call <= calls; ++call) {
        Day day;
        wasStruck = day.doFailing(step, trouble, call);
        const QString wrong = day.complaint();
        const QByteArray context = day.struck + " " + QByteArray::number(call) + ", " +
                                   std::strerror(trouble.error) + ": " + wrong.toUtf8();
        QVERIFY2(wrong.isEmpty(), context.constData());
    }
}

} // namespace

// One that is never called has another name by now, or is not caught, and its rows show nothing.
void TestFaults::eachFunctionThatFails_isCalled() {
    if (qEnvironmentVariableIsSet("VELM_FAULTS"))
        for (const auto &[stepName, step] : steps)
            qInfo() << stepName << callsMadeIn(step);
    for (const auto &[function, errors] : functions) {
        int calls = 0;
        for (const auto &[stepName, step] : steps)
            calls += callsOf(step, function);
        QVERIFY2(calls > 0, function);
    }
}

void TestFaults::nothingIsLost_data() {
    QTest::addColumn<Step>("step");
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<Errors>("errors");
    for (const auto &[stepName, step] : stepsOfThisHalf())
        for (const auto &[function, errors] : functions)
            QTest::addRow("%s, %s", stepName, function)
                << step << QByteArray(function) << (triesAll() ? all() : errors);
}

void TestFaults::nothingIsLost() {
    QFETCH(Step, step);
    QFETCH(QByteArray, function);
    QFETCH(Errors, errors);
    for (const int error : errors)
        tryEachCall(step, {function, error});
}

void TestFaults::nothingIsLostByTwoFaults_data() {
    QTest::addColumn<Step>("step");
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<int>("again");
    for (const auto &[stepName, step] : stepsOfThisHalf())
        for (const char *function : {"write", "pwrite", "rename"})
            for (int again = 1; again <= (triesAll() ? 8 : 2); ++again)
                QTest::addRow("%s, %s and call %d behind it", stepName, function, again)
                    << step << QByteArray(function) << again;
}

void TestFaults::nothingIsLostByTwoFaults() {
    QFETCH(Step, step);
    QFETCH(QByteArray, function);
    QFETCH(int, again);
    tryEachCall(step, {function, EIO, Mishap::Fails, again});
}

void TestFaults::nothingIsLostByShortCalls_data() {
    QTest::addColumn<Step>("step");
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<int>("again");
    for (const auto &[stepName, step] : stepsOfThisHalf())
        for (const char *function : {"write", "pwrite", "read"})
            for (const int again : {0, 1})
                QTest::addRow("%s, half a %s%s", stepName, function,
                              again == 0 ? "" : " and no more")
                    << step << QByteArray(function) << again;
}

void TestFaults::nothingIsLostByShortCalls() {
    QFETCH(Step, step);
    QFETCH(QByteArray, function);
    QFETCH(int, again);
    tryEachCall(step, {function, ENOSPC, Mishap::Shortens, again});
}

QTEST_MAIN(TestFaults)
#include "tst_faults.moc"

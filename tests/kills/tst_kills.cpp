// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "kills/WorkSteps.h"
#include "settings/IniText.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "settings/StoredValue.h"
#include "support/FileHelpers.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <csignal>
#include <optional>
#include <thread>

/// The program is killed at random moments of its work. What it leaves is old or new, never a
/// part of either, and the next start clears away what was unfinished.
///
/// It is killed 300 times, or about as often as VELM_KILLS says.
class TestKills : public QObject {
    Q_OBJECT

private slots:
    void whatAKilledProgramLeaves_isWhole_data();
    void whatAKilledProgramLeaves_isWhole();
};

namespace {

constexpr int usualKills = 300;
constexpr int killsInARound = 100; // each round begins in a new folder
constexpr std::chrono::milliseconds patience = std::chrono::seconds(20);
/// From the start of the work to the kill.
constexpr std::chrono::microseconds longestWork = std::chrono::milliseconds(40);
constexpr int maxRecent = 8;
const QString mark = QStringLiteral(".velm-aside-");

/// What the program has brought about, as far as files tell.
struct World {
    QVariantMap settings;
    QStringList recent; ///< the opened files that the program remembers
    QByteArray image;
    QByteArray exported; ///< null before the first export
};

/// The folder in which the program works, from one kill to the next.
class Desk {
public:
    Desk() {
        QDir(folder.path()).mkdir(QStringLiteral("exports"));
        for (int number = 0; number < workSteps::binaries; ++number)
            writeWholeFile(binaryPath(number), workSteps::binaryBytes(number));
        SettingsStore settings(path(QStringLiteral("velm.conf")));
        for (const auto &[key, name] :
             {std::pair(settingsKeys::temp_output_file, "temp.bin"),
              std::pair(settingsKeys::temp_read_from_chip_file, "read"),
              std::pair(settingsKeys::temp_search_results_file, "found"),
              std::pair(settingsKeys::temp_logic_chip_test_results_file, "report")})
            settings.setValue(key, path(QStringLiteral("workspace/") + QLatin1String(name)));
        settings.setValue(settingsKeys::skipErase, false);
        settings.setValue(settingsKeys::binary, binaryPath(0));
    }

    QString path(const QString &name) const { return folder.filePath(name); }
    QString binaryPath(int number) const { return path(workSteps::binaryName(number)); }

    /// What the files hold; nothing if one of those with settings is damaged or missing.
    std::optional<World> world() const {
        const auto settings = iniText::values(readWholeFile(path(QStringLiteral("velm.conf"))));
        const auto memory = iniText::values(readWholeFile(path(QStringLiteral("state.conf"))));
        if (!settings || settings->isEmpty() || !memory)
            return std::nullopt;
        return World{*settings, storedValue::list(memory->value(QStringLiteral("files/recent"))),
                     readWholeFile(path(QStringLiteral("workspace/temp.bin"))),
                     readWholeFile(path(QStringLiteral("exports/export.bin")))};
    }

    /// The image that a composition makes in \a world.
    QByteArray composed(const World &world) const {
        for (int number = 0; number < workSteps::binaries; ++number)
            if (world.settings.value(settingsKeys::binary).toString() == binaryPath(number))
                return workSteps::binaryBytes(number);
        return {};
    }

    /// What \a before is after \a step.
    World after(const World &before, int step) const;

    /// The unfinished files in the program's own folders.
    QStringList litter() const {
        QStringList found;
        for (const QString &name : {QStringLiteral("."), QStringLiteral("workspace")})
            found += QDir(path(name)).entryList({u'*' + mark + u'*'}, QDir::Files | QDir::Hidden);
        return found;
    }

    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/velm-XXXXXX")};
};

World Desk::after(const World &before, int step) const {
    World world = before;
    switch (workSteps::kindOf(step)) {
    case workSteps::Kind::NameDevice:
        world.settings[settingsKeys::device] = workSteps::device(step);
        break;
    case workSteps::Kind::OpenBinary: {
        const QString opened = binaryPath(workSteps::binary(step));
        world.settings[settingsKeys::binary] = opened;
        world.recent.removeAll(opened);
        world.recent.prepend(opened);
        world.recent = world.recent.mid(0, maxRecent);
        world.image = composed(world);
        break;
    }
    case workSteps::Kind::EnterText:
        world.image.replace(workSteps::place(step), workSteps::enteredLength,
                            workSteps::entered(step));
        break;
    case workSteps::Kind::Compose:
        world.image = composed(world);
        break;
    case workSteps::Kind::Export:
        world.exported = world.image;
        break;
    case workSteps::Kind::ToggleOption: {
        const bool was = before.settings.value(settingsKeys::skipErase) == QStringLiteral("true");
        world.settings[settingsKeys::skipErase] =
            was ? QStringLiteral("false") : QStringLiteral("true");
        break;
    }
    }
    return world;
}

/// True if each byte of \a bytes is that of \a before or of \a after.
bool isBetween(const QByteArray &bytes, const QByteArray &before, const QByteArray &after) {
    if (bytes.size() != before.size() || bytes.size() != after.size())
        return false;
    for (qsizetype at = 0; at < bytes.size(); ++at)
        if (bytes.at(at) != before.at(at) && bytes.at(at) != after.at(at))
            return false;
    return true;
}

/// What is wrong with \a left, the world that a program has left that was killed in \a step of
/// \a before or at its end; empty if nothing is.
QString complaint(const World &left, const World &before, const World &after, int step) {
    if (left.settings != before.settings && left.settings != after.settings)
        return QStringLiteral("the settings are neither old nor new");
    if (left.recent != before.recent && left.recent != after.recent)
        return QStringLiteral("what is remembered is neither old nor new");
    if (left.exported != before.exported && left.exported != after.exported)
        return QStringLiteral("the export is torn");
    // An entry is written into the image in place; the next start makes the image anew.
    const bool inPlace = workSteps::kindOf(step) == workSteps::Kind::EnterText;
    const bool isWhole = inPlace ? isBetween(left.image, before.image, after.image)
                                 : left.image == before.image || left.image == after.image;
    return isWhole ? QString() : QStringLiteral("the image is torn");
}

/// The program at work in the folder of a desk.
class Program {
public:
    Program(const Desk &desk, int step) {
        process_.setReadChannel(QProcess::StandardOutput);
        process_.setStandardErrorFile(QProcess::nullDevice());
        process_.start(QStringLiteral(VELM_AT_WORK), {desk.folder.path(), QString::number(step)});
    }

    ~Program() {
        process_.kill();
        process_.waitForFinished(int(patience.count()));
    }

    /// True once it has started up.
    bool isUp() {
        while (!process_.canReadLine())
            if (!process_.waitForReadyRead(int(patience.count())))
                return false;
        return process_.readLine() == "up\n";
    }
    /// Lets it work for \a time and kills it. Gives the steps that it has begun, a line each;
    /// nothing if it ended by itself.
    std::optional<QByteArrayList> workFor(std::chrono::microseconds time) {
        process_.write("\n");
        if (!process_.waitForBytesWritten(int(patience.count())) ||
            !process_.waitForReadyRead(int(patience.count())))
            return std::nullopt;
        std::this_thread::sleep_for(time);
        ::kill(pid_t(process_.processId()), SIGKILL);
        if (!process_.waitForFinished(int(patience.count())) ||
            process_.exitStatus() != QProcess::CrashExit)
            return std::nullopt;
        QByteArrayList lines = process_.readAllStandardOutput().split('\n');
        lines.removeLast();
        return lines;
    }

private:
    QProcess process_;
};

/// Starts the program on \a desk, where \a next is the first step to be done, and kills it at its
/// work after \a time. Checks what the kill before has left, and what this one does.
void startAndKill(const Desk &desk, int &next, std::chrono::microseconds time) {
    Program program(desk, next);
    QVERIFY(program.isUp());
    QCOMPARE(desk.litter(), QStringList());
    std::optional<World> before = desk.world();
    QVERIFY(before);
    QVERIFY2(before->image == desk.composed(*before), "the image was not made anew");

    const auto steps = program.workFor(time);
    QVERIFY(steps && !steps->isEmpty());
    const int last = steps->last().toInt();
    for (; next < last; ++next)
        before = desk.after(*before, next);
    const std::optional<World> left = desk.world();
    QVERIFY2(left, "the settings are damaged");
    const QString wrong = complaint(*left, *before, desk.after(*before, last), last);
    QVERIFY2(wrong.isEmpty(), qPrintable(QStringLiteral("step %1: %2").arg(last).arg(wrong)));
    next = last + 1;
}

} // namespace

void TestKills::whatAKilledProgramLeaves_isWhole_data() {
    QTest::addColumn<quint32>("seed");
    const int wanted = qEnvironmentVariableIntValue("VELM_KILLS");
    const int kills = wanted > 0 ? wanted : usualKills;
    for (quint32 round = 0; int(round) * killsInARound < kills; ++round)
        QTest::addRow("round %u", round + 1) << round;
}

void TestKills::whatAKilledProgramLeaves_isWhole() {
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const Desk desk;
    int next = 0;
    qsizetype unfinished = 0;
    for (int kill = 0; kill < killsInARound && !QTest::currentTestFailed(); ++kill) {
        startAndKill(desk, next,
                     std::chrono::microseconds(random.bounded(qint64(longestWork.count()))));
        unfinished += desk.litter().size();
    }
    qInfo("killed in the course of %d steps; unfinished files: %d", next, int(unfinished));
}

QTEST_GUILESS_MAIN(TestKills)
#include "tst_kills.moc"

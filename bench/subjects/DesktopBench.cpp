// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/DesktopProgram.h"
#include "subjects/Peers.h"
#include "subjects/Samples.h"

#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <exception>
#include <stdexcept>

namespace {

constexpr int startRounds = 7;
constexpr int openRounds = 3;
constexpr int keyRounds = 3;
constexpr int keysInARound = 11;
constexpr qint64 openedSize = 256 * mebibyte;
constexpr qint64 pagedSize = 16 * mebibyte;
constexpr xcb_keysym_t burnTabKey = '2';

/// Where the windows have their bytes, at their first size as well as at the compared one.
constexpr double velmPageLeft = 0.3;
constexpr double oktetaPageLeft = 0.05;
constexpr double ghexPageLeft = 0.2;

constexpr int manyFavourites = 500;

constexpr double maxOfPlainStart = 1.2;
constexpr double maxOfHeavyStart = 1.2;
constexpr double maxOfOktetasStart = 0.35;
constexpr double maxOfOktetasMemory = 0.5;
constexpr double maxOfOktetasOpening = 0.6;
constexpr double maxOfGhexsOpening = 0.35;
constexpr double maxOfGhexsKey = 1;

const std::string starting = "start-up to first frame";
const std::string opening = "start with a file of 256 MiB to its first page";
const std::string paging = "page key to pixels";

/// A home for the settings of the programs, and the files that they open.
class Desk {
public:
    Desk() {
        QDir().mkpath(folder_.filePath(QStringLiteral("runtime")));
        QFile::setPermissions(folder_.filePath(QStringLiteral("runtime")),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        settings_.setValue(settingsKeys::temp_output_file, path("workspace/temp.bin"));
    }

    QString path(const char *name) const { return folder_.filePath(QLatin1String(name)); }
    std::string word(const char *name) const { return path(name).toStdString(); }

    DesktopProgram start(const ProgramStart &start) {
        return DesktopProgram(display_, start, folder_.path().toStdString());
    }

    /// VELM with \a file as its opened binary, or without any.
    ProgramStart velm(const QString &file = {}) {
        settings_.setValue(settingsKeys::binary, file);
        // What a start before left behind is not this one's to remove.
        QFile::remove(path("workspace/temp.bin"));
        return {{VELM_PROGRAM, "--settings", word("velm.conf"), "--state", word("state.conf")},
                velmPageLeft};
    }

    /// The same for somebody with many favourites.
    ProgramStart velmOfManyFavourites(const QString &file) {
        QStringList favourites;
        for (int number = 0; number < manyFavourites; ++number)
            favourites.append(QStringLiteral("AT28C%1@DIP28").arg(number));
        settings_.setValue(settingsKeys::favourites, favourites);
        return velm(file);
    }
    void forgetFavourites() { settings_.setValue(settingsKeys::favourites, QStringList()); }

private:
    QTemporaryDir folder_;
    SettingsStore settings_{path("velm.conf")};
    XDisplay display_;
};

/// A program that VELM is compared with.
struct Rival {
    std::string name;
    std::string program; ///< its path; empty if it is not installed
    double pageLeft;

    ProgramStart alone() const { return {{program}, pageLeft}; }
    ProgramStart with(const QString &file) const {
        return {{program, file.toStdString()}, pageLeft};
    }
};

/// A rival that cannot be driven here is a gap; our own failure is one of the measurement.
template <typename Measure>
void withRival(Table &table, const std::string &what, const Rival &other, const Measure &measure) {
    if (other.program.empty())
        return table.gap(what, other.name, "not installed");
    try {
        measure();
    } catch (const std::exception &error) {
        table.gap(what, other.name, error.what());
    }
}

struct StartCost {
    double time = 0;
    double memory = 0;
};

StartCost startCost(Desk &desk, const ProgramStart &start) {
    DesktopProgram program = desk.start(start);
    const double time = program.untilFirstFrame();
    return {time, program.memory()};
}

void compareStart(Table &table, Desk &desk, const Rival &other, std::optional<double> maxTime,
                  std::optional<double> maxMemory) {
    std::vector<double> ourMemory;
    std::vector<double> theirMemory;
    const auto timed = [&desk](const ProgramStart &start, std::vector<double> &memory) {
        const StartCost cost = startCost(desk, start);
        memory.push_back(cost.memory);
        return cost.time;
    };
    const auto medians =
        interleaved(startRounds, {[&] { return timed(desk.velm(), ourMemory); },
                                  [&] { return timed(other.alone(), theirMemory); }});
    table.compare(starting, milliseconds(medians[0]), {other.name, milliseconds(medians[1])},
                  maxTime);
    table.compare("memory at the first frame", mebibytes(median(ourMemory)),
                  {other.name, mebibytes(median(theirMemory))}, maxMemory);
}

/// What a heavy user's start has to do besides: read the file, and write the image.
double loadAndSaveOnce(const Desk &desk, const QString &file) {
    const Stopwatch stopwatch;
    const QByteArray bytes = readFile(file);
    QFile copy(desk.path("copy.bin"));
    if (!copy.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        copy.write(bytes) != bytes.size())
        throw std::runtime_error("the copy cannot be written");
    return stopwatch.milliseconds();
}

void compareHeavyStart(Table &table, Desk &desk) {
    const QString file = desk.path("opened.bin");
    const auto medians = interleaved(
        startRounds, {[&] {
                          desk.forgetFavourites();
                          return startCost(desk, desk.velm()).time;
                      },
                      [&] { return startCost(desk, desk.velmOfManyFavourites({})).time; },
                      [&] { return startCost(desk, desk.velmOfManyFavourites(file)).time; },
                      [&] { return loadAndSaveOnce(desk, file); }});
    const Peer plain{"without", milliseconds(medians[0])};
    table.compare("start with 500 favourites", milliseconds(medians[1]), plain, maxOfPlainStart);
    table.compare("start with 500 favourites and a file of 256 MiB", milliseconds(medians[2]),
                  {"without, and reading and writing it", milliseconds(medians[0] + medians[3])},
                  maxOfHeavyStart);
}

/// Our window opens on the other tab, so that the page of the opened binary takes a key as well.
double openWithVelm(Desk &desk, const QString &file) {
    DesktopProgram program = desk.start(desk.velm(file));
    program.untilFirstFrame();
    program.focus();
    program.pressWithControl(burnTabKey);
    return program.untilPage();
}

double openWithRival(Desk &desk, const Rival &other, const QString &file) {
    DesktopProgram program = desk.start(other.with(file));
    program.untilFirstFrame();
    return program.untilPage();
}

void compareOpening(Table &table, Desk &desk, const Rival &other, double most) {
    const QString file = desk.path("opened.bin");
    const auto medians =
        interleaved(openRounds, {[&] { return openWithVelm(desk, file); },
                                 [&] { return openWithRival(desk, other, file); }});
    table.compare(opening, milliseconds(medians[0]), {other.name, milliseconds(medians[1])}, most);
}

double pageKeys(DesktopProgram program, bool onBurnTab) {
    program.untilFirstFrame();
    program.placeAndClick();
    if (onBurnTab)
        program.pressWithControl(burnTabKey);
    program.untilPage();
    program.placeAndClick();
    std::vector<double> taken;
    for (int key = 0; key < keysInARound; ++key)
        taken.push_back(program.pageDown());
    return median(taken);
}

void comparePageKey(Table &table, Desk &desk, const Rival &other, std::optional<double> most) {
    const QString file = desk.path("paged.bin");
    const auto medians =
        interleaved(keyRounds, {[&] { return pageKeys(desk.start(desk.velm(file)), true); },
                                [&] { return pageKeys(desk.start(other.with(file)), false); }});
    table.compare(paging, milliseconds(medians[0]), {other.name, milliseconds(medians[1])}, most);
}

void compareAll(Table &table) {
    Desk desk;
    const Rival okteta{"Okteta", findProgram("okteta"), oktetaPageLeft};
    const Rival ghex{"GHex", findProgram("ghex"), ghexPageLeft};
    withRival(table, starting, okteta,
              [&] { compareStart(table, desk, okteta, maxOfOktetasStart, maxOfOktetasMemory); });
    withRival(table, starting, ghex,
              [&] { compareStart(table, desk, ghex, std::nullopt, std::nullopt); });
    writeFile(desk.path("opened.bin"), randomBytes(openedSize));
    writeFile(desk.path("paged.bin"), randomBytes(pagedSize));
    compareHeavyStart(table, desk);
    withRival(table, opening, okteta,
              [&] { compareOpening(table, desk, okteta, maxOfOktetasOpening); });
    withRival(table, opening, ghex, [&] { compareOpening(table, desk, ghex, maxOfGhexsOpening); });
    withRival(table, paging, okteta, [&] { comparePageKey(table, desk, okteta, std::nullopt); });
    withRival(table, paging, ghex, [&] { comparePageKey(table, desk, ghex, maxOfGhexsKey); });
}

} // namespace

void benchDesktop(Table &table) {
    if (std::getenv("DISPLAY") != nullptr)
        return compareAll(table);
    for (const std::string &what : {starting, opening, paging})
        table.gap(what, "Okteta, GHex", "no X display");
}

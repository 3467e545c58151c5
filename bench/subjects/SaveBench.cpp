// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Peers.h"
#include "subjects/Samples.h"

#include "base/Log.h"
#include "files/FileLoading.h"
#include "image/ImageComposition.h"
#include "image/TemporaryWorkspace.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QTemporaryDir>

#include <stdexcept>
#include <unistd.h>

namespace {

constexpr qint64 imageSize = 64 * mebibyte;
constexpr qint64 contentSize = 40 * mebibyte;
constexpr qint64 contentStart = 8 * mebibyte;
constexpr int rounds = 7;
constexpr double maxOfSrecCat = 0.15;
constexpr double maxOfObjcopyWall = 1.5;
constexpr double maxOfObjcopyCpu = 1.1;

class SilentLog final : public Log {
public:
    void write(const QString &) override {}
};

/// Makes the same image file from the same binary file as the programs that it is compared with.
class SaveJob {
public:
    SaveJob() : settings_(path("velm.conf")), workspace_(settings_, log_) {
        settings_.setValue(settingsKeys::temp_output_file, path("ours.bin"));
        writeFile(path("in.bin"), randomBytes(contentSize));
        writeFile(path("head.bin"), QByteArray(1, '\xFF'));
    }

    QString path(const char *name) const { return folder_.filePath(QLatin1String(name)); }
    std::string word(const char *name) const { return path(name).toStdString(); }

    /// From file to file, in this process.
    CommandCost run() {
        const double cpuBefore = ownCpuMilliseconds();
        const Stopwatch stopwatch;
        CompositionInputs inputs;
        inputs.opened_bin_data = *loadWholeFile(path("in.bin"));
        inputs.rom_start_address = QString::number(contentStart, 16);
        inputs.pad_to = QString::number(imageSize / 1024);
        inputs.pad = true;
        if (!workspace_.write_output_data_to_temp_file(*composeImage(inputs).image))
            throw std::runtime_error("the image could not be saved");
        return {stopwatch.milliseconds(), ownCpuMilliseconds() - cpuBefore};
    }

private:
    QTemporaryDir folder_;
    SettingsStore settings_;
    SilentLog log_;
    TemporaryWorkspace workspace_;
};

std::vector<std::string> srecCatWords(const SaveJob &job, const std::string &program) {
    return {program,
            job.word("in.bin"),
            "-binary",
            "-offset",
            std::to_string(contentStart),
            "-fill",
            "0xFF",
            "0",
            std::to_string(imageSize),
            "-o",
            job.word("theirs.bin"),
            "-binary"};
}

/// The output begins with the lowest section, so one byte stands at the start of the image.
std::vector<std::string> objcopyWords(const SaveJob &job, const std::string &program) {
    return {program,
            "-I",
            "binary",
            "-O",
            "binary",
            "--change-section-address",
            ".data=" + std::to_string(contentStart),
            "--add-section",
            ".head=" + job.word("head.bin"),
            "--set-section-flags",
            ".head=alloc,load,contents,data",
            "--change-section-address",
            ".head=0",
            "--gap-fill",
            "0xFF",
            "--pad-to",
            std::to_string(imageSize),
            job.word("in.bin"),
            job.word("theirs.bin")};
}

struct Costs {
    CommandCost ours;
    CommandCost theirs;
};

Costs measure(SaveJob &job, const std::vector<std::string> &words) {
    std::vector<double> ourCpu;
    std::vector<double> theirCpu;
    const auto wall = [](std::vector<double> &cpu, const CommandCost &cost) {
        cpu.push_back(cost.cpu);
        return cost.wall;
    };
    // What one job has left for the disk must not be waited for by the next.
    const auto settled = [](const auto &work) {
        ::sync();
        return work();
    };
    const auto walls = interleaved(
        rounds, {[&] { return wall(ourCpu, settled([&] { return job.run(); })); },
                 [&] { return wall(theirCpu, settled([&] { return runCommand(words); })); }});
    if (readFile(job.path("ours.bin")) != readFile(job.path("theirs.bin")))
        throw std::runtime_error(words.front() + " makes other bytes");
    return {{walls[0], median(ourCpu)}, {walls[1], median(theirCpu)}};
}

void compareWithSrecCat(Table &table, SaveJob &job) {
    const std::string what = "compose + save 64 MiB";
    const std::string program = findProgram("srec_cat");
    if (program.empty())
        return table.gap(what, "srec_cat", "not installed");
    const Costs costs = measure(job, srecCatWords(job, program));
    table.compare(what, milliseconds(costs.ours.wall),
                  {"srec_cat", milliseconds(costs.theirs.wall)}, maxOfSrecCat);
}

void compareWithObjcopy(Table &table, SaveJob &job) {
    const std::string what = "compose + save 64 MiB";
    const std::string program = findProgram("objcopy");
    if (program.empty())
        return table.gap(what, "objcopy", "not installed");
    const Costs costs = measure(job, objcopyWords(job, program));
    table.compare(what, milliseconds(costs.ours.wall), {"objcopy", milliseconds(costs.theirs.wall)},
                  maxOfObjcopyWall);
    table.compare(what + ", CPU", milliseconds(costs.ours.cpu),
                  {"objcopy", milliseconds(costs.theirs.cpu)}, maxOfObjcopyCpu);
}

} // namespace

void benchSave(Table &table) {
    SaveJob job;
    compareWithSrecCat(table, job);
    compareWithObjcopy(table, job);
}

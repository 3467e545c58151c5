// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Measures the program and prints one table of ratios. Arguments are parts of the names of the
// groups to measure; without any, all are.

#include "instruments/Table.h"
#include "subjects/Benches.h"

#include <QApplication>
#include <QFile>
#include <QStringList>
#include <QSysInfo>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <thread>

namespace {

struct Group {
    const char *name;
    void (*measure)(Table &table);
};

constexpr Group groups[] = {
    {"compose", benchCompose}, {"save", benchSave},   {"formats", benchFormats},
    {"text", benchText},       {"facts", benchFacts}, {"comparison", benchComparison},
    {"map", benchMap},         {"find", benchFind},   {"grid", benchGrid},
    {"console", benchConsole}, {"child", benchChild}, {"devices", benchDevices},
    {"window", benchWindow},   {"turns", benchTurns}, {"edit", benchEdit},
    {"desktop", benchDesktop},
};

QString processorName() {
    QFile facts(QStringLiteral("/proc/cpuinfo"));
    if (!facts.open(QIODevice::ReadOnly))
        return QStringLiteral("unknown processor");
    const QString text = QString::fromUtf8(facts.readAll());
    return text.section(QStringLiteral("model name"), 1, 1)
        .section(u'\n', 0, 0)
        .section(u':', 1)
        .trimmed();
}

void printMachine() {
    const QString line = QStringLiteral("%1 cores, %2, Linux %3, Qt %4, build type %5")
                             .arg(std::thread::hardware_concurrency())
                             .arg(processorName(), QSysInfo::kernelVersion(),
                                  QLatin1String(qVersion()), QLatin1String(VELM_BUILD_TYPE));
    std::printf("%s\n\n", qPrintable(line));
    std::fflush(stdout);
}

bool isWanted(const Group &group, const QStringList &words) {
    if (words.isEmpty())
        return true;
    for (const QString &word : words)
        if (QLatin1String(group.name).contains(word))
            return true;
    return false;
}

void measure(const Group &group, Table &table) {
    std::fprintf(stderr, "measuring: %s\n", group.name);
    try {
        group.measure(table);
    } catch (const std::exception &error) {
        table.failure(group.name, error.what());
    }
}

int listGroups() {
    for (const Group &group : groups)
        std::printf("%s\n", group.name);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char *argv[]) {
    QApplication application(argc, argv);
    const QStringList words = QApplication::arguments().mid(1);
    if (words == QStringList{QStringLiteral("--list")})
        return listGroups();
    printMachine();
    Table table;
    bool any = false;
    for (const Group &group : groups) {
        if (!isWanted(group, words))
            continue;
        any = true;
        measure(group, table);
    }
    if (!any) {
        std::fprintf(stderr, "There is no such group; --list names them.\n");
        return EXIT_FAILURE;
    }
    std::printf("%s", table.text().c_str());
    return table.hasFailures() ? EXIT_FAILURE : EXIT_SUCCESS;
}

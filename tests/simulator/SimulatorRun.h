// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QTemporaryDir>

/// What a finished run of the simulated programmer left behind.
struct Answer {
    int status = -1;
    QByteArray out;
    QByteArray err; ///< every duration replaced by "T"

    bool operator==(const Answer &) const = default;
};

/// For QCOMPARE.
char *toString(const Answer &answer);

/// A bench of its own for each test: an empty chip folder, the instant pace, and the simulator.
class TestBench {
public:
    TestBench();

    /// Sets one of the MINIPRO_SIM_* variables for the runs to come, by the end of its name.
    void set(const QString &variable, const QString &value);

    /// Sets the folder where the tool looks for its database besides its own.
    void setHome(const QString &home);

    /// A file that is to be read or written, in the folder of this bench.
    [[nodiscard]] QString path(const QString &name) const;
    QString makeFile(const QString &name, const QByteArray &content) const;
    [[nodiscard]] QByteArray contentOf(const QString &name) const;

    /// Runs the simulator to its end, with `input` on its standard input.
    [[nodiscard]] Answer run(const QStringList &arguments, const QByteArray &input = {}) const;

    /// Reads `device` and gives what the run left in its file, nothing when it failed.
    [[nodiscard]] QByteArray readChip(const QString &device) const;

    /// Starts the simulator; the test ends it.
    void start(QProcess &process, const QStringList &arguments) const;

private:
    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
};

/// The first lines of every run that reaches the programmer.
QByteArray bannerText();

/// A progress line from 0 % to its end: `updates` updates of `counting`, then `finished`.
QByteArray progressText(const QByteArray &counting, const QByteArray &finished, int updates);
QByteArray readingText(int updates);
QByteArray writingText(int updates);

/// The first `updates` of `total` updates of a progress line that never comes to its end.
QByteArray brokenProgress(const QByteArray &label, int updates, int total);

/// What follows every complaint about the command line.
QByteArray usageText();

/// `text` with every duration ("0.13Sec") replaced by "T".
QByteArray withoutDurations(QByteArray text);

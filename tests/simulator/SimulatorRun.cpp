// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "SimulatorRun.h"

#include "support/FileHelpers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTest>

namespace {
constexpr int finishTimeout = 60'000;
} // namespace

char *toString(const Answer &answer) {
    const QByteArray picture = "exit " + QByteArray::number(answer.status) +
                               "\nout: " + answer.out.toPercentEncoding(" \n") +
                               "\nerr: " + answer.err.toPercentEncoding(" \n");
    return qstrdup(picture.constData());
}

TestBench::TestBench() {
    environment.remove(QStringLiteral("MINIPRO_SIM_CHIPS"));
    environment.remove(QStringLiteral("MINIPRO_SIM_FAULT"));
    environment.remove(QStringLiteral("MINIPRO_SIM_DIALECT"));
    environment.remove(QStringLiteral("MINIPRO_HOME"));
    set(QStringLiteral("PACE"), QStringLiteral("instant"));
    set(QStringLiteral("BENCH"), path(QStringLiteral("bench")));
}

void TestBench::set(const QString &variable, const QString &value) {
    environment.insert(QStringLiteral("MINIPRO_SIM_") + variable, value);
}

void TestBench::setHome(const QString &home) {
    environment.insert(QStringLiteral("MINIPRO_HOME"), home);
}

QString TestBench::path(const QString &name) const {
    return folder.filePath(name);
}

QString TestBench::makeFile(const QString &name, const QByteArray &content) const {
    QDir().mkpath(QFileInfo(path(name)).absolutePath());
    if (!writeWholeFile(path(name), content))
        qFatal("cannot write %s", qPrintable(path(name)));
    return path(name);
}

QByteArray TestBench::contentOf(const QString &name) const {
    return QFile::exists(path(name)) ? readWholeFile(path(name)) : QByteArray("no such file");
}

void TestBench::start(QProcess &process, const QStringList &arguments) const {
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder.path());
    process.start(QStringLiteral(MINIPRO_SIM), arguments);
}

Answer TestBench::run(const QStringList &arguments, const QByteArray &input) const {
    QProcess process;
    start(process, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(finishTimeout) || process.exitStatus() != QProcess::NormalExit)
        return {-1, process.readAllStandardOutput(), process.readAllStandardError()};
    return {process.exitCode(), process.readAllStandardOutput(),
            withoutDurations(process.readAllStandardError())};
}

QByteArray TestBench::readChip(const QString &device) const {
    const QString name = QStringLiteral("read.bin");
    const Answer answer = run({QStringLiteral("-p"), device, QStringLiteral("-r"), path(name)});
    return answer.status == 0 ? contentOf(name) : QByteArray();
}

QByteArray bannerText() {
    return "Found TL866II+ 04.2.132 (0x284)\n"
           "Device code: 12345678\n"
           "Serial code: ABCDEFGHIJKLMNOPQRST\n"
           "USB speed: 12Mbps (USB 1.1)\n";
}

QByteArray progressText(const QByteArray &counting, const QByteArray &finished, int updates) {
    QByteArray text;
    for (int i = 0; i < updates; ++i) {
        const QByteArray percentage = QByteArray::number(qint64{100} * i / updates);
        text += "\r\x1b[K" + counting + percentage.rightJustified(2) + '%';
    }
    return text + "\r\x1b[K" + finished + "T  OK\n";
}

QByteArray readingText(int updates) {
    return progressText("Reading Code...  ", "Reading Code...  ", updates);
}

QByteArray writingText(int updates) {
    return progressText("Writing  Code...  ", "Writing Code...  ", updates);
}

QByteArray brokenProgress(const QByteArray &label, int updates, int total) {
    QByteArray text;
    for (int i = 0; i < updates; ++i)
        text += "\r\x1b[K" + label + QByteArray::number(100 * i / total).rightJustified(2) + '%';
    return text;
}

QByteArray usageText() {
    return "minipro version 0.7.3     A free and open TL866 series programmer\n"
           "Usage: minipro-sim [options]\n"
           "See the manual page (type \"man minipro-sim\" for documentation)\n\n";
}

QByteArray withoutDurations(QByteArray text) {
    static const QRegularExpression duration(QStringLiteral("\\d+\\.\\d\\dSec"));
    return QString::fromLatin1(text).replace(duration, QStringLiteral("T")).toLatin1();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "counts/HotPaths.h"

#include "image/DisplayText.h"
#include "image/ImageComposition.h"
#include "language/DeviceListing.h"
#include "language/LogicReport.h"
#include "language/RunJudgement.h"
#include "language/ToolReportReader.h"
#include "settings/IniFile.h"
#include "subjects/Samples.h"
#include "widgets/TerminalText.h"

#include <QDeadlineTimer>
#include <QTemporaryDir>

#include <memory>
#include <stdexcept>
#include <tuple>

namespace {

using Work = std::function<void()>;

constexpr qsizetype outputSize = qsizetype(100) * 1024; ///< bytes that a tool prints
constexpr qsizetype pieceSize = 4096;                   ///< bytes that come at once
constexpr int reportRows = 1000;
constexpr int catalogueNames = 10000;
constexpr int settingsKeys = 100;

void mustHold(bool condition, const char *what) {
    if (!condition)
        throw std::runtime_error(what);
}

QString repeated(const char *line, qsizetype size) {
    const QString text = QString::fromLatin1(line);
    return text.repeated(size / text.size());
}

QString progress() {
    QString text;
    for (int percent = 0; text.size() < outputSize; percent = (percent + 1) % 100)
        text += QStringLiteral("\r\x1b[KReading Code... %1%").arg(percent, 2);
    return text;
}

ToolReport reportOn(const QString &text) {
    ToolReportReader reader;
    for (qsizetype at = 0; at < text.size(); at += pieceSize)
        reader.take(QStringView(text).mid(at, pieceSize));
    return reader.report();
}

Work composing() {
    CompositionInputs inputs;
    inputs.opened_bin_data = std::make_shared<QByteArray>(randomBytes(mebibyte / 2));
    inputs.rom_start_address = QStringLiteral("1000");
    inputs.pad_to = QStringLiteral("1024");
    inputs.pad = true;
    return [inputs] {
        const Composition made = composeImage(inputs);
        mustHold(made.image && (*made.image)->size() == mebibyte, "nothing was composed");
    };
}

Work decoding() {
    const auto buffer = std::make_shared<QByteArray>(multiByteText(mebibyte));
    return [buffer] { mustHold(DisplayText(buffer).isMultiByte(), "the text was not decoded"); };
}

/// Of the bytes that are edited the first makes another text of all others, and the last gives it
/// back.
Work editingText() {
    const auto buffer = std::make_shared<QByteArray>(mebibyte, '\0');
    const auto text = std::make_shared<DisplayText>(buffer);
    return [buffer, text] {
        const auto edit = [&](qsizetype offset, char byte) {
            (*buffer)[offset] = byte;
            text->update(buffer, {offset, 1});
        };
        for (const char byte : {'\x80', '\0', '\xc3', '\0'})
            edit(mebibyte / 2, byte);
        edit(mebibyte / 2 + 1, '\xa9');
        edit(mebibyte / 2, '\xc3');
        mustHold(text->isMultiByte(), "the edits were not decoded");
    };
}

Work judging() {
    const QString said =
        repeated("Found T48 00.1.33 (0x121)\nWarning: Firmware is newer than expected.\n"
                 "Device code: 12345678\n",
                 outputSize) +
        QStringLiteral("Reading Code...  0.47Sec  OK\n");
    return [said] {
        RunFacts facts;
        facts.tool = QStringLiteral("/usr/bin/minipro");
        facts.device = QStringLiteral("W27C512@DIP28");
        facts.report = reportOn(said);
        mustHold(!judgeRun(facts).sentence.isEmpty(), "there is no verdict");
    };
}

Work readingProgress() {
    const QString said = progress() + QStringLiteral("\r\x1b[KReading Code...  0.47Sec  OK\n");
    return [said] { mustHold(reportOn(said).lastStepDone, "the end was not understood"); };
}

Work parsingReport() {
    QString text = QStringLiteral("      1  2  3  4  5  6  7  8  9  10 11 12 13 14 \n");
    for (int row = 0; row < reportRows; ++row)
        text += QStringLiteral("%1: 0  0  H- 0  0  H  G  H  0  0  H  0  0  V  \n")
                    .arg(row, 4, 10, QChar(u'0'));
    return
        [text] { mustHold(parseLogicReport(text).rows.size() == reportRows, "rows are missing"); };
}

Work parsingCatalogue() {
    QString text;
    for (int name = 0; name < catalogueNames; ++name)
        text += QStringLiteral("AT28C%1@SOIC28\n").arg(name);
    return [text] {
        const Result<DeviceListing> listing = readDeviceListing(text);
        mustHold(listing && listing->names.size() == catalogueNames, "names are missing");
    };
}

Work keepingSettings() {
    const auto folder = std::make_shared<QTemporaryDir>();
    QVariantMap values;
    for (int key = 0; key < settingsKeys; ++key)
        values.insert(QStringLiteral("key%1").arg(key),
                      QStringLiteral("value, number %1").arg(key));
    return [folder, values] {
        IniFile file(folder->filePath(QStringLiteral("velm.conf")));
        std::ignore = file.change(values, QDeadlineTimer(QDeadlineTimer::Forever));
        const IniFile::Outcome read = file.read();
        mustHold(read && *read == values, "the settings were not kept");
    };
}

Work playingTerminal() {
    const QString said = repeated("a line of text\n\x1b[1mbold\x1b[0m\r12%\r13%\n", outputSize);
    return [said] {
        TerminalText terminal;
        for (qsizetype at = 0; at < said.size(); at += pieceSize)
            terminal.feed(QStringView(said).mid(at, pieceSize));
        mustHold(terminal.hasUpdate(), "there is nothing to show");
        terminal.takeUpdate();
    };
}

} // namespace

std::vector<HotPath> hotPaths() {
    return {
        {"compose", composing},          {"decode", decoding},
        {"text-edits", editingText},     {"judge", judging},
        {"progress", readingProgress},   {"logic-report", parsingReport},
        {"catalogue", parsingCatalogue}, {"settings", keepingSettings},
        {"terminal", playingTerminal},
    };
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/CommandLine.h"

#include "language/ShellMarks.h"
#include "settings/FilePaths.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"

#include <QStringList>

#include <algorithm>

namespace {

QString quoted(const QString &value) {
    return u'"' + value + u'"';
}

bool isPlainInShell(QChar character) {
    static constexpr QStringView plainMarks(u"@._+-/:=");
    const char16_t unit = character.unicode();
    return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
           (unit >= u'a' && unit <= u'z') || plainMarks.contains(character);
}

QStringList actionWords(Operation operation, const ToolSettings &settings) {
    switch (operation) {
    case ReadOperation:
        return {QStringLiteral("-r"), quoted(settings.readPath)};
    case VerifyOperation:
        return {QStringLiteral("-m"), quoted(settings.outputPath)};
    case WriteOperation:
        return {QStringLiteral("-w"), quoted(settings.outputPath)};
    case LogicOperation:
        break;
    }
    return {};
}

QStringList fileSwitches(const ToolSettings &settings) {
    QStringList words;
    if (settings.noSizeMismatchError)
        words.append(QStringLiteral("-s"));
    if (settings.skipErase)
        words.append(QStringLiteral("-e"));
    if (settings.unprotect)
        words.append(QStringLiteral("-u"));
    return words;
}

/// What the shell takes for more than itself in \a tool, and between double quotes in
/// \a quotedText.
QString oddIn(const QString &tool, const QString &quotedText) {
    QString found;
    const auto look = [&found](const QString &text, QStringView odd) {
        for (const QChar character : text) {
            const bool isControl = character.category() == QChar::Other_Control;
            if ((isControl || odd.contains(character)) && !found.contains(character))
                found.append(character);
        }
    };
    look(tool, shellMarksOutsideQuotes);
    look(quotedText, shellMarksInQuotes);
    return found;
}

} // namespace

ToolSettings ToolSettings::readFrom(const SettingsStore &settings) {
    using namespace settingsKeys;
    return {.tool = settings.stringValue(miniproLocation),
            .device = settings.stringValue(settingsKeys::device),
            .outputPath = absolutePathOf(settings, temp_output_file),
            .readPath = absolutePathOf(settings, temp_read_from_chip_file),
            .noIDMismatchError = settings.boolValue(settingsKeys::noIDMismatchError),
            .noSizeMismatchError = settings.boolValue(settingsKeys::noSizeMismatchError),
            .skipErase = settings.boolValue(settingsKeys::skipErase),
            .unprotect = settings.boolValue(settingsKeys::unprotect)};
}

QString operationCommand(Operation operation, const ToolSettings &settings) {
    QStringList words{settings.tool};
    if (operation == LogicOperation)
        words.append(QStringLiteral("-T"));
    words << QStringLiteral("-p") << quoted(settings.device) << actionWords(operation, settings);
    if (settings.noIDMismatchError)
        words.append(QStringLiteral("-y"));
    if (operation != LogicOperation)
        words << fileSwitches(settings);
    return words.join(u' ');
}

QString oddCharacters(Operation operation, const ToolSettings &settings) {
    const QString fileName = operation == LogicOperation  ? QString()
                             : operation == ReadOperation ? settings.readPath
                                                          : settings.outputPath;
    return oddIn(settings.tool, settings.device + fileName);
}

QString oddCharactersInCatalogue(const QString &tool, const QString &path) {
    return oddIn(tool, path);
}

QString catalogueCommand(const QString &tool, const QString &term, const QString &path) {
    return tool + QStringLiteral(" -L ") + shellWord(term) + QStringLiteral(" > ") + quoted(path);
}

// Nobody knows which programmer it will be, and what a device has does not depend on it: only
// whether the tool lists it. The first model's list is the longest; a T76 is known to newer tools
// alone.
QString descriptionCommand(const QString &tool, const QString &device) {
    QStringList attempts;
    for (const char *model : {"tl866ii", "t48", "t56", "tl866a"})
        attempts.append(tool + QStringLiteral(" -q ") + QLatin1String(model) +
                        QStringLiteral(" -d ") + shellWord(device));
    return attempts.join(QStringLiteral(" || "));
}

QString shellWord(const QString &term) {
    if (!term.isEmpty() && std::all_of(term.begin(), term.end(), isPlainInShell))
        return term;
    QString inner = term;
    inner.replace(u'\'', QStringLiteral("'\\''"));
    return u'\'' + inner + u'\'';
}

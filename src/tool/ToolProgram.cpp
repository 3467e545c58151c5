// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ToolProgram.h"

#include "language/ShellMarks.h"
#include "settings/FilePaths.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace {

constexpr QChar quote = u'\'';

/// Besides what is odd in a command it is what stands for other names, and what the shell takes for
/// a comment or an assignment.
bool isMoreThanItself(QChar character) {
    static constexpr QStringView others(u"*?[]{}#!=~");
    return character.isSpace() || character.category() == QChar::Other_Control ||
           shellMarksOutsideQuotes.contains(character) || others.contains(character);
}

} // namespace

std::optional<QString> programOf(const QString &tool) {
    // The shell knows the home folder outside quotes alone.
    const QStringList pieces = withHomeFolder(tool.trimmed()).split(quote);
    const bool isOpenAtTheEnd = pieces.size() % 2 == 0;
    // What stands at an odd place is quoted.
    for (qsizetype i = 0; i < pieces.size(); i += 2)
        if (std::any_of(pieces[i].begin(), pieces[i].end(), isMoreThanItself))
            return std::nullopt;
    const QString program = pieces.join(QString());
    return isOpenAtTheEnd || program.isEmpty() ? std::nullopt : std::optional(program);
}

bool isKnownToBeMissing(const QString &tool) {
    const std::optional<QString> program = programOf(tool);
    if (!program || !QDir::isAbsolutePath(*program))
        return false;
    const QFileInfo file(*program);
    return !file.isFile() || !file.isExecutable();
}

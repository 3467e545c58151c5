// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/ToolProgram.h"

#include "base/Result.h"
#include "files/SystemName.h"
#include "language/ShellMarks.h"
#include "settings/FilePaths.h"

#include <QByteArray>
#include <QDir>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr QChar quote = u'\'';

/// Besides what is odd in a command it is what stands for other names, and what the shell takes for
/// a comment or an assignment.
bool isMoreThanItself(QChar character) {
    static constexpr QStringView others(u"*?[]{}#!=~");
    return character.isSpace() || character.category() == QChar::Other_Control ||
           shellMarksOutsideQuotes.contains(character) || others.contains(character);
}

std::optional<ProgramTrouble> troubleAt(const QByteArray &name) {
    struct stat facts = {};
    if (::stat(name.constData(), &facts) != 0)
        return saysMissing(errno) ? std::optional(ProgramTrouble::Missing) : std::nullopt;
    const bool mayRun = ::access(name.constData(), X_OK) == 0 || errno != EACCES;
    return S_ISREG(facts.st_mode) && mayRun ? std::nullopt
                                            : std::optional(ProgramTrouble::NotExecutable);
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

std::optional<ProgramTrouble> programTrouble(const QString &tool) {
    const std::optional<QString> program = programOf(tool);
    if (!program || !QDir::isAbsolutePath(*program))
        return std::nullopt;
    const Result<QByteArray> name = systemName(*program);
    return name ? troubleAt(*name) : ProgramTrouble::Missing;
}

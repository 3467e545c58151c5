// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/CommandDoubt.h"

#include "base/Digits.h"
#include "base/VisibleText.h"

#include <QCoreApplication>
#include <QStringList>

namespace {

class CommandDoubtWording {
    Q_DECLARE_TR_FUNCTIONS(CommandDoubt)

public:
    static QString foreign() {
        return tr("As far as VELM remembers, the programmer tool was not set here.");
    }

    static QString plain(const CommandDoubt &doubt) {
        return tr("The command is: %1.").arg(visibleText(doubt.command));
    }

    static QString odd(const CommandDoubt &doubt) {
        return tr("The shell takes %1 in this command for more than a name: %2.")
            .arg(shown(doubt.oddCharacters), visibleText(doubt.command));
    }

private:
    static QString shown(const QString &characters) {
        QStringList names;
        for (const QChar character : characters)
            names << (character.isPrint()
                          ? QString(character)
                          : QStringLiteral("U+") + hexDigits(character.unicode(), 4));
        return names.join(u' ');
    }
};

} // namespace

QString sentenceOf(const CommandDoubt &doubt) {
    const QString command = doubt.oddCharacters.isEmpty() ? CommandDoubtWording::plain(doubt)
                                                          : CommandDoubtWording::odd(doubt);
    return doubt.toolIsForeign ? CommandDoubtWording::foreign() + u' ' + command : command;
}

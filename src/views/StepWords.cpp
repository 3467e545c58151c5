// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/StepWords.h"

#include "language/ChipParts.h"

#include <QCoreApplication>

namespace {

/// The tool calls a part by a word; of anything longer, this many UTF-16 units are shown.
constexpr qsizetype longestPart = 20;

class StepWording {
    Q_DECLARE_TR_FUNCTIONS(StepWords)

public:
    /// The parts of a chip that the tool reads and writes; another keeps the tool's name.
    static QString part(const QString &name) {
        if (isCodeMemory(name))
            return tr("code");
        if (isDataPart(name))
            return tr("data");
        if (isUserPart(name))
            return tr("user data");
        return name.left(longestPart);
    }

    static QString words(const RunProgress &progress) {
        switch (progress.phase) {
        case RunPhase::Starting:
            break;
        case RunPhase::Erasing:
            return tr("Erasing");
        case RunPhase::Reading:
            return tr("Reading %1").arg(part(progress.part));
        case RunPhase::Writing:
            return tr("Writing %1").arg(part(progress.part));
        case RunPhase::Verifying:
            return tr("Verifying %1").arg(part(progress.part));
        case RunPhase::Protecting:
            return tr("Setting write protection");
        case RunPhase::Testing:
            return tr("Testing");
        }
        return tr("Starting");
    }

    static QString search() { return tr("Searching"); }
};

} // namespace

QString wordsForStep(const RunProgress &progress) {
    return StepWording::words(progress);
}

QString wordsForSearch() {
    return StepWording::search();
}

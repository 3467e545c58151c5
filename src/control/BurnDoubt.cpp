// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/BurnDoubt.h"

#include "files/SystemName.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

class DoubtWording {
    Q_DECLARE_TR_FUNCTIONS(BurnDoubt)

public:
    static QString foreignFile(const BurnSituation &situation) {
        const QString path = QDir::toNativeSeparators(situation.path);
        if (!situation.hasImage)
            return tr("There are no data to burn, and %1 may hold something else.").arg(path);
        if (isKnownToBeMissing(situation))
            return tr("The data to burn are in no file: %1 is missing.").arg(path);
        if (const Failure *unread = situation.holdsImage.failure())
            return tr("It is not known whether %1 holds the data to burn: %2.")
                .arg(path, unread->reason);
        const Failure *failure = situation.written.failure();
        const QFileInfo file(situation.path);
        if (failure && file.isFile() && file.size() == 0)
            return tr("%1 is empty: the data to burn could not be written there (%2).")
                .arg(path, failure->reason);
        if (failure)
            return tr("%1 does not hold the data to burn, which could not be written there (%2).")
                .arg(path, failure->reason);
        return tr("%1 does not hold the data to burn: something else has changed it.").arg(path);
    }

    static QString pressAgainForFile(const BurnSituation &situation) {
        const Operation operation = situation.operation;
        if (isKnownToBeMissing(situation))
            return operation == WriteOperation
                       ? tr("Press Write again to start the tool all the same.")
                       : tr("Press Verify again to start the tool all the same.");
        return operation == WriteOperation
                   ? tr("Press Write again to burn that file as it stands.")
                   : tr("Press Verify again to compare the chip with that file as it stands.");
    }

    static QString encodedText(Operation operation, ImageEncoding encoding) {
        const QString what = tr("The tool takes these data for %1 text and decodes them by itself.")
                                 .arg(nameOf(encoding));
        return what + u' ' +
               (operation == WriteOperation
                    ? tr("Press Write again to burn what it decodes, not the bytes shown.")
                    : tr("Press Verify again to compare the chip with what it decodes, not with "
                         "the bytes shown."));
    }

    static QString opened(ImageEncoding encoding, const QString &name) {
        return tr("%1 reads as %2 text, which the tool decodes by itself: burned from address 0, "
                  "the chip would not hold the bytes shown here.")
            .arg(name, nameOf(encoding));
    }

    static QString pressAgainToRun(const BurnSituation &situation) {
        switch (situation.operation) {
        case ReadOperation:
            return tr("Press Read again to run it.");
        case VerifyOperation:
            return tr("Press Verify again to run it.");
        case WriteOperation:
            return tr("Press Write again to run it.");
        case LogicOperation:
            break;
        }
        return tr("Press Logic test again to run it.");
    }

    static QString noImage() {
        return tr("There are no data to burn. Press Write again to start the tool all the same.");
    }

    static QString noData() {
        return tr(
            "There are no data to burn: open a binary, or read a chip and use its data. Press "
            "Write again to hand the tool an empty file all the same.");
    }

private:
    /// What could not be read may lead somewhere by the time that the tool reads it.
    static bool isKnownToBeMissing(const BurnSituation &situation) {
        return situation.holdsImage && isMissing(situation.path);
    }
};

std::optional<BurnDoubt> doubtAboutImage(const BurnSituation &situation) {
    if (!takesImage(situation.operation))
        return std::nullopt;
    const bool writes = situation.operation == WriteOperation;
    if (!situation.fileIsImage())
        return BurnDoubt{.key = QStringLiteral("file"),
                         .sentence = DoubtWording::foreignFile(situation) + u' ' +
                                     DoubtWording::pressAgainForFile(situation),
                         .canWriteAgain = true};
    if (writes && !situation.hasImage)
        return BurnDoubt{.key = QStringLiteral("none"), .sentence = DoubtWording::noImage()};
    if (writes && situation.imageLength == 0)
        return BurnDoubt{.key = QStringLiteral("empty"), .sentence = DoubtWording::noData()};
    if (situation.encoding != ImageEncoding::Raw)
        return BurnDoubt{.key = QStringLiteral("text"),
                         .sentence =
                             DoubtWording::encodedText(situation.operation, situation.encoding)};
    return std::nullopt;
}

} // namespace

std::optional<BurnDoubt> doubtAbout(const BurnSituation &situation) {
    const std::optional<BurnDoubt> doubt = doubtAboutImage(situation);
    if (!situation.command.asks())
        return doubt;
    BurnDoubt both =
        doubt.value_or(BurnDoubt{.key = {}, .sentence = DoubtWording::pressAgainToRun(situation)});
    both.key.prepend(QStringLiteral("command "));
    both.sentence.prepend(sentenceOf(situation.command) + u' ');
    return both;
}

QString decodingRemark(ImageEncoding encoding, const QString &name) {
    return encoding == ImageEncoding::Raw ? QString() : DoubtWording::opened(encoding, name);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/ChipFactsWords.h"

#include "base/JoinedWords.h"
#include "base/NumberWords.h"
#include "base/ShownName.h"

#include <QCoreApplication>
#include <QStringList>

#include <variant>

namespace {

class ChipFactsWording {
    Q_DECLARE_TR_FUNCTIONS(ChipFactsWords)

public:
    static QString bytes(const QString &count) { return tr("%1 bytes").arg(count); }

    static QString sizeOf(const MemorySection &section) {
        const QString count = grouped(section.count);
        switch (section.unit) {
        case MemorySection::Unit::Bytes:
            return bytes(count);
        case MemorySection::Unit::Words:
            return tr("%1 bytes (%2 words)").arg(grouped(*section.bytes()), count);
        case MemorySection::Unit::Bits:
            break;
        }
        return tr("%1 bits").arg(count);
    }

    static QString sizeOf(const QList<MemorySection> &sections) {
        QStringList sizes;
        for (const MemorySection &section : sections)
            sizes.append(sizeOf(section));
        return sizes.join(QStringLiteral(" + "));
    }

    /// The tool names an adapter by the picture of it that another program has.
    static QString package(const QString &words) {
        return words.endsWith(u".JPG") ? tr("in an adapter") : shownName(words);
    }

    QString operator()(std::monostate) const { return {}; }
    QString operator()(const NoSuchDevice &) const {
        return tr("The tool knows no device of this name.");
    }
    QString operator()(const DeviceDescription &chip) const {
        QStringList pieces = {chip.vectors ? tr("logic IC") : sizeOf(chip.sections),
                              package(chip.package)};
        if (chip.vectors)
            pieces << (*chip.vectors == 1 ? tr("1 vector")
                                          : tr("%1 vectors").arg(grouped(*chip.vectors)));
        return joinedWords(pieces, u", ");
    }
};

} // namespace

QString chipWords(const DeviceAnswer &answer) {
    return std::visit(ChipFactsWording(), answer);
}

QString fitWords(const std::optional<ImageFit> &fit) {
    if (!fit || fit->excess == 0)
        return {};
    const QString count = grouped(qAbs(fit->excess));
    return fit->excess > 0 ? ChipFactsWording::tr("data too long by %1").arg(count)
                           : ChipFactsWording::tr("data shorter by %1").arg(count);
}

QString programmersWords(const DeviceAnswer &answer) {
    const auto *chip = std::get_if<DeviceDescription>(&answer);
    return chip && !chip->programmers.isEmpty()
               ? ChipFactsWording::tr("Programmers: %1").arg(shownName(chip->programmers))
               : QString();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/KnownMemories.h"

#include "base/JoinedWords.h"
#include "language/ChipParts.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <algorithm>

namespace {

class MemoryWording {
    Q_DECLARE_TR_FUNCTIONS(KnownMemories)

public:
    explicit MemoryWording(const KnownMemories &memories) {
        if (memories.data)
            names_ << tr("data memory");
        if (memories.user)
            names_ << tr("user memory");
        if (memories.fuses)
            names_ << tr("fuses");
        // They may be those that have names already.
        if (memories.others && !memories.data && !memories.user)
            names_.prepend(tr("other memories"));
        isOne_ = names_.size() == 1 && (memories.data || memories.user);
    }

    bool isOne() const { return isOne_; }

    /// "data memory, user memory and fuses".
    QString list() const { return listWords(names_); }

private:
    QStringList names_;
    bool isOne_ = false;
};

} // namespace

KnownMemories KnownMemories::without(const QStringList &parts) const {
    const bool noData = std::none_of(parts.begin(), parts.end(), isDataPart);
    const bool noUser = std::none_of(parts.begin(), parts.end(), isUserPart);
    KnownMemories left = *this;
    left.data = data && noData;
    left.user = user && noUser;
    left.fuses = fuses && std::none_of(parts.begin(), parts.end(), isFusePart);
    left.others = others && noData && noUser;
    return left;
}

bool choosesMemory(const QString &tool) {
    static const QRegularExpression choice(
        QStringLiteral("\\s-[A-Za-z]*c[\\s\"']*(data|user|config)\\b"),
        QRegularExpression::CaseInsensitiveOption);
    return tool.contains(choice);
}

QString notWrittenWords(const KnownMemories &memories) {
    if (!memories.any())
        return {};
    const MemoryWording words(memories);
    return (words.isOne() ? MemoryWording::tr("The chip's %1 was not written.")
                          : MemoryWording::tr("The chip's %1 were not written."))
        .arg(words.list());
}

QString notComparedWords(const KnownMemories &memories) {
    if (!memories.any())
        return {};
    const MemoryWording words(memories);
    return (words.isOne() ? MemoryWording::tr("The chip's %1 was not compared.")
                          : MemoryWording::tr("The chip's %1 were not compared."))
        .arg(words.list());
}

QString codeAloneWords(const KnownMemories &memories) {
    if (!memories.any())
        return {};
    const QString alone =
        MemoryWording::tr("Write and Verify concern the code memory alone, not the chip's %1.")
            .arg(MemoryWording(memories).list());
    // Most microcontrollers are erased whole.
    return memories.data ? alone + u' ' + MemoryWording::tr("Erasing may blank the data memory.")
                         : alone;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/FixedFont.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

namespace {

bool isFixed(const QFont &font) {
    return QFontInfo(font).fixedPitch();
}

/// What is tried, in this order: what the toolkit takes for a typewriter's font, fonts that most
/// desktops have, then any other.
QStringList candidates() {
    QFont typewriter;
    typewriter.setStyleHint(QFont::TypeWriter);
    QStringList families = {typewriter.defaultFamily(), QStringLiteral("DejaVu Sans Mono"),
                            QStringLiteral("Liberation Mono"), QStringLiteral("Noto Sans Mono")};
    for (const QString &family : QFontDatabase::families(QFontDatabase::Latin))
        if (QFontDatabase::isFixedPitch(family))
            families << family;
    return families;
}

} // namespace

QFont fixedFont() {
    return fixedFontInsteadOf(QFontDatabase::systemFont(QFontDatabase::FixedFont));
}

QFont fixedFontInsteadOf(const QFont &wanted) {
    if (isFixed(wanted))
        return wanted;
    for (const QString &family : candidates()) {
        QFont font = wanted;
        font.setFamilies({family});
        font.setStyleHint(QFont::TypeWriter);
        if (isFixed(font))
            return font;
    }
    return wanted;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <random>

/// Texts that a file of lines is known to spoil, one after the other from a fixed seed.
class AwkwardTexts {
public:
    explicit AwkwardTexts(unsigned seed) : random_(seed) {}

    /// A text of up to twelve pieces; \a withHalves also has halves of surrogate pairs.
    QString next(bool withHalves = true) {
        QString text;
        for (auto pieces = random_() % 13; pieces > 0; --pieces)
            text += piece(withHalves);
        return text;
    }

private:
    QString piece(bool withHalves) {
        static const QStringList words = {
            QStringLiteral("@"),         QStringLiteral("@@"),        QStringLiteral("@Invalid()"),
            QStringLiteral("@Variant("), QStringLiteral("@Rect(1"),   QStringLiteral("@ByteArray("),
            QStringLiteral(")"),         QStringLiteral("%2F"),       QStringLiteral("%"),
            QStringLiteral("\\"),        QStringLiteral("\\x4"),      QStringLiteral("\""),
            QStringLiteral("'"),         QStringLiteral(","),         QStringLiteral(", "),
            QStringLiteral(";"),         QStringLiteral("#"),         QStringLiteral("="),
            QStringLiteral("["),         QStringLiteral("]"),         QStringLiteral("/"),
            QStringLiteral(" "),         QStringLiteral("  "),        QStringLiteral("\t"),
            QStringLiteral("\n"),        QStringLiteral("\r\n"),      QStringLiteral("a"),
            QStringLiteral("7"),         QStringLiteral("x"),         QStringLiteral("General"),
            QStringLiteral("\u00e9"),    QStringLiteral("\u6f22"),    QStringLiteral("\u2028"),
            QStringLiteral("\u0085"),    QStringLiteral("\ufeff"),    QStringLiteral("\uffff"),
            QStringLiteral("\x7f"),      QStringLiteral("\U0001F4BE")};
        switch (random_() % 8) {
        case 0:
            return QChar(char16_t(random_() % 0x20));
        case 1:
            return withHalves ? QString(QChar(char16_t(0xd800 + random_() % 0x800))) : QString();
        default:
            return words.at(qsizetype(random_() % unsigned(words.size())));
        }
    }

    std::mt19937 random_;
};

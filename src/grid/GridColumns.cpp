// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridColumns.h"

#include "base/Digits.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>

const QString &columnIdentifier(int number) {
    static const auto identifiers = [] {
        std::array<QString, gridColumns> texts;
        for (int column = 0; column < gridColumns; ++column)
            texts[size_t(column)] = QString::number(column);
        return texts;
    }();
    return identifiers.at(size_t(number));
}

int columnNumber(QStringView identifier) {
    QStringView text = identifier.trimmed();
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+'))
        text = text.sliced(1);

    constexpr qint64 bound = qint64(std::numeric_limits<int>::max()) + 1;
    qint64 number = 0;
    for (const QChar digit : text) {
        const std::optional<int> value = digitValue(digit, decimal);
        if (!value)
            break;
        number = std::min(bound, number * decimal + *value);
    }
    return int(negative ? -number : std::min(number, bound - 1));
}

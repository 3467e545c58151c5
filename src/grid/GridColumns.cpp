// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "grid/GridColumns.h"

#include "image/NumberScanning.h"

#include <array>

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
    return scanInt(identifier).value_or(0);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "kills/WorkSteps.h"

namespace {

constexpr int kinds = 6;
constexpr int bytesInARow = 16;

} // namespace

namespace workSteps {

Kind kindOf(int step) {
    return Kind(step % kinds);
}

QString device(int step) {
    return QStringLiteral("DEVICE%1").arg(step);
}

int binary(int step) {
    return step / kinds % binaries;
}

QString binaryName(int number) {
    return QStringLiteral("rom%1.bin").arg(number);
}

QByteArray binaryBytes(int number) {
    return QByteArray(imageSize, char('A' + number));
}

int row(int step) {
    return step % (imageSize / bytesInARow);
}

qsizetype place(int step) {
    return qsizetype(row(step)) * bytesInARow;
}

QByteArray entered(int step) {
    constexpr int letters = 26;
    return QByteArray(enteredLength, char('a' + step % letters));
}

} // namespace workSteps

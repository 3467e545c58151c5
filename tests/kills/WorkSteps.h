// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// The work that is done over and over until the program is killed: steps with numbers, from
/// which follows what each of them does. Known to the program at work and to whoever looks at
/// what is left of it.
namespace workSteps {

enum class Kind { NameDevice, OpenBinary, EnterText, Compose, Export, ToggleOption };

constexpr int imageSize = 1 << 16; ///< bytes, of every binary
constexpr int binaries = 16;
constexpr int enteredLength = 12; ///< bytes that an entry replaces

Kind kindOf(int step);
/// The device that step \a step names.
QString device(int step);
/// The number of the binary that \a step opens.
int binary(int step);
/// The file name of binary \a number, and its bytes, which are all the same.
QString binaryName(int number);
QByteArray binaryBytes(int number);
/// The row of the grid into whose first cell \a step enters a text, where that is in the image,
/// and the bytes of the text.
int row(int step);
qsizetype place(int step);
QByteArray entered(int step);

} // namespace workSteps

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QKeySequence>
#include <QString>

class QWidget;

/// The keys of those entries of the menus that texts of the window name.
namespace menuKeys {
inline constexpr auto openBinary = QKeySequence::Open;
inline constexpr auto saveRead = Qt::CTRL | Qt::SHIFT | Qt::Key_S;
inline constexpr auto saveToBurn = QKeySequence::Save;
inline constexpr auto find = QKeySequence::Find;
inline constexpr auto findNext = Qt::Key_F3;
inline constexpr auto findPrevious = Qt::SHIFT | Qt::Key_F3;
inline constexpr auto goToAddress = Qt::CTRL | Qt::Key_G;
inline constexpr auto writeZeros = Qt::CTRL | Qt::Key_0;
inline constexpr auto read = Qt::Key_F5;
inline constexpr auto verify = Qt::Key_F6;
inline constexpr auto write = Qt::Key_F7;
inline constexpr auto testLogic = Qt::Key_F8;
inline constexpr auto stop = Qt::CTRL | Qt::Key_Period;
inline constexpr auto showDataToBurn = Qt::CTRL | Qt::Key_2;
} // namespace menuKeys

/// \a keys as a menu writes them.
QString keyWords(const QKeySequence &keys);

/// Names \a keys in the tool tip of \a control, in the place of its "%1".
void nameKeysIn(QWidget &control, const QKeySequence &keys);

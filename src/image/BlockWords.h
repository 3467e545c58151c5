// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/BlockChange.h"

#include <QString>

// What is said of changes of the data to burn. All of it is translated.

/// Why a change was not made.
QString blockTroubleWords(BlockTrouble trouble);

/// "4,096 bytes"; "no bytes" for none.
QString sizeWords(qint64 size);
/// "4,096 bytes at 1000": some bytes, of which there is one at least.
QString bytesAtWords(ByteRange bytes);

/// Of \a length bytes some do not fit over those from \a offset on in an image of \a imageSize
/// bytes.
QString doNotFitWords(qint64 length, qint64 offset, qint64 imageSize);

/// \a bytes were filled with \a content.
QString filledWords(ByteRange bytes, const BlockContent &content);
/// \a bytes were pasted.
QString pastedWords(ByteRange bytes);
/// The \a bytes of the file that is called \a name were written over others, or came before these.
QString fileWrittenWords(const QString &name, ByteRange bytes);
QString fileInsertedWords(const QString &name, ByteRange bytes);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>

/// The offset that \a text is, as an address from the start of the image; nothing if it is none.
std::optional<qint64> typedOffset(const QString &text);
/// Says that an image of \a imageSize bytes, which is not empty, has no byte at \a offset.
QString noByteWords(qint64 offset, qint64 imageSize);

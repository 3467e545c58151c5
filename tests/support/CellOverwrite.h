// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/HandEdits.h"
#include "grid/CellEdit.h"

/// Writes \a bytes over those at \a offset, as an entry does that is typed, and has \a edits
/// remember it.
inline void overwrite(HandEdits &edits, qint64 offset, const QByteArray &bytes) {
    QByteArray &image = *edits.image();
    CellEdit edit;
    edit.offset = offset;
    edit.bytesWritten = bytes.size();
    edit.replaced = image.mid(offset, bytes.size());
    image.replace(offset, bytes.size(), bytes);
    edits.remember(edit);
}

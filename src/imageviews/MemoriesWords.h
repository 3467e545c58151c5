// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/OtherMemories.h"

#include <QString>

// What is said of memories besides the code memory, translated.

/// All of \a memories: "512 bytes of data memory, 3 fuses"; empty for none.
QString memoriesWords(const OtherMemories &memories);

/// What \a memory is called, as a heading.
QString memoryName(OtherMemory memory);

/// A sentence on files that came and could not be read; empty for none.
QString unreadWords(const QList<OtherMemories::Unread> &unread);

/// The digits of \a fuse, as many as it was written with: "0x62".
QString hexadecimalWords(const Fuse &fuse);
/// Its bits, in groups of four: "0110 0010".
QString binaryWords(const Fuse &fuse);

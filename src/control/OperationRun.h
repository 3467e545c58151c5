// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "control/BurnDoubt.h"
#include "files/ByteBuffer.h"
#include "language/CommandLine.h"
#include "language/RunRecord.h"

class Log;
class ScriptedMiniPro;

/// Sets the operation of \a run to that of the button with \a tag, and logs which it is. With a tag
/// that no operation has, the run keeps the one that it was made with.
void chooseOperation(ScriptedMiniPro &run, int tag, Log &log);

/// Launches \a run, whose operation is chosen, with \a settings, and waits for its end (the event
/// loop turns meanwhile). \a burn is what the run was found to be about before, and
/// \a imageRevision the state of the data to burn. The record lacks only what the run has left in
/// its files; the run's output has been released.
RunRecord carryOut(ScriptedMiniPro &run, const ToolSettings &settings, const BurnSituation &burn,
                   quint64 imageRevision);

/// The file that a Read should have left.
struct ReadFile {
    QString path;
    Result<ByteBuffer> bytes = ByteBuffer();

    /// In bytes; 0 where it could not be read.
    qint64 length() const { return bytes ? lengthOf(*bytes) : 0; }
};

/// Loads the file at \a path, and logs it if that is not possible.
ReadFile loadReadFile(const QString &path, Log &log);

/// Completes the record of a Read by \a file. True if the bytes in it are those of the chip that
/// was read: a tool that failed may leave the file of an earlier Read in place.
bool judgeRead(RunRecord &record, const ReadFile &file);

/// Says of the bytes in the file at \a path that they are older than the Read of \a record.
QString staleReadRemark(const RunRecord &record, const QString &path);

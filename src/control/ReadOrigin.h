// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "files/FileStamp.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <optional>

struct ReadFile;
struct RunRecord;

/// Which Read the data read from the chip are of. A Read that fails may leave those of an earlier
/// one, a part of its own, or a whole that lacks only what would have followed.
class ReadOrigin {
public:
    /// A Read that ended well.
    struct GoodRead {
        QString device;
        QDateTime endedAt;
    };

    /// A run begins, which writes the file at \a path if it is a Read.
    void expect(const QString &path);
    /// It was the Read of \a record and has left \a file; \a isWhole says whether it brought all
    /// of it.
    void take(const RunRecord &record, const ReadFile &file, bool isWhole);

    /// The Read that brought \a bytes; nothing if they are of one that failed, or of none.
    std::optional<GoodRead> of(const ByteBuffer &bytes) const;
    /// The device whose Read the newest bytes are of, be it one that failed; empty if there are
    /// none, or if no Read is known to have brought them.
    const QString &device() const { return device_; }

private:
    std::weak_ptr<QByteArray> bytes_;
    std::optional<FileStamp::Look> loaded_; ///< at the file that they were loaded from
    /// At the file that a Read was to write.
    FileStamp::Look before_ = std::optional<FileStamp>();
    QString device_;
    QDateTime endedAt_; ///< null if the Read failed
};

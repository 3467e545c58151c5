// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/TurnedWork.h"
#include "files/ByteBuffer.h"
#include "formats/ImageFlattening.h"
#include "formats/RecordReader.h"

#include <QObject>

#include <optional>

/// Reads a file of records, and makes an image of it, on turns of the event loop that are shorter
/// than a frame.
class RecordImport final : public QObject {
    Q_OBJECT

public:
    /// Of the bytes in \a file, which is not null.
    explicit RecordImport(ByteBuffer file, QObject *parent = nullptr);

    /// Reads the file as text of \a format, from the beginning.
    void read(RecordFormat format);
    /// Forgets what was read.
    void stop();
    bool isReading() const { return reader_ && !isRead_; }
    /// What was read; null before it is whole.
    const DecodedRecords *decoded() const;
    /// How much of the file has been read, from 0 to 100.
    int percent() const;

    /// Makes an image of what was read, which it must be possible to flatten, instead of any that
    /// is being made. imageMade() follows.
    void makeImage(qint64 base, quint8 fill);
    bool isMakingImage() const { return flattening_.has_value(); }

    const QByteArray &file() const { return *file_; }
    const ByteBuffer &buffer() const { return file_; }

signals:
    /// More has been read.
    void advanced();
    void imageMade(const ByteBuffer &image);
    /// There is not enough memory for the image, or for the bytes: what was read of these is
    /// forgotten then.
    void outOfMemory();

private:
    bool advance();
    void finish();

    ByteBuffer file_;
    std::optional<RecordReader> reader_;
    bool isRead_ = false;
    std::optional<ImageFlattening> flattening_;
    TurnedWork work_;
};

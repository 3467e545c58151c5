// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/ExchangeSurroundings.h"
#include "exchange/ImportWindow.h"
#include "files/ByteBuffer.h"
#include "files/OpenedFileWatch.h"
#include "files/StampedFile.h"

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

struct WindowMenus;

/// Imports files. What is text of records, which the programmer tool would decode by itself, is
/// shown in an import window before its bytes become a file of the program's own and the opened
/// binary; everything else is opened as the binary at once. While imported bytes are the opened
/// binary, the message line tells when a file that they came from is written.
class FileImport final : public QObject {
    Q_OBJECT

public:
    explicit FileImport(const ExchangeSurroundings &surroundings);

    /// Adds its entry to the file menu, as one that is off while the tool runs.
    void addEntry(WindowMenus &menus);

    /// Asks for a file and shows what it holds. Refused while the tool works.
    void choose();
    /// Opens the file at the absolute \a path: text of records in an import window, all else as the
    /// binary. Refused while the tool works.
    void open(const QString &path);

private:
    void load(const QString &path);
    void show(const StampedFile &file);
    void choosePart(ImportWindow &window);
    void take(const ByteBuffer &image, ImportWindow &from);
    void openBinary(const QString &path, ImportWindow &from);
    void watchSources(const QList<ImportWindow::Source> &sources);
    void noteOnDisk(const QString &source, OpenedFileWatch::State state);
    void sayWritten(const QString &source);

    const ExchangeSurroundings with_;
    std::vector<std::unique_ptr<OpenedFileWatch>> sources_; ///< of the opened binary
    QStringList writtenSources_; ///< since they were imported, the newest last
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "app/ExchangeSurroundings.h"
#include "exchange/ExportWindow.h"

#include <QObject>
#include <QPointer>

#include <functional>

struct WindowMenus;

/// Exports the images, whole or in part, as they are or as text of records.
class FileExport final : public QObject {
    Q_OBJECT

public:
    explicit FileExport(const ExchangeSurroundings &surroundings);

    /// Adds its entry to the file menu, as one that is off while the tool runs.
    void addEntry(WindowMenus &menus);

    /// Opens the export window, or brings it to the front. Refused while the tool works.
    void show();

private:
    void makeWindow();
    ByteBuffer bytesOf(ExportWindow::Image image) const;
    void prepare();
    QString offeredPath() const;
    void chooseNames();
    void save(const ExportWindow::Content &content);
    void saveOne(const ExportWindow::Content &content, const std::function<void()> &saved);
    bool saveAll(const ExportWindow::Content &content);

    const ExchangeSurroundings with_;
    QPointer<ExportWindow> shown_;
    quint64 revision_ = 0; ///< of the image to burn when it was looked at
};

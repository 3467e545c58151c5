// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "grid/GridSource.h"
#include "image/DisplayText.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

/// An image with its text, as the program keeps it.
struct Image {
    explicit Image(const QByteArray &content)
        : bytes(std::make_shared<QByteArray>(content)), text(bytes) {}

    ByteBuffer bytes;
    DisplayText text;
};

struct ShownContent;

/// Presents an image by the program's own rules; an entry changes nothing.
class ImageSource : public GridSource {
public:
    /// \a image must stay for as long as it is presented.
    explicit ImageSource(const Image &image) : image_(&image) {}
    void present(const Image &image) { image_ = &image; }

    quint64 numberOfRowsInTableView(QObject *table) override;
    CellValue tableView_objectValueForTableColumn_row(QObject *table, const QString &column,
                                                      qint64 row) override;
    bool tableView_shouldEditTableColumn_row(QObject *table, const QString &column,
                                             qint64 row) override;
    void tableView_setObjectValue_forTableColumn_row(QObject *table, const QString &value,
                                                     const QString &column, qint64 row) override;
    bool tableView_shouldSelectRow(QObject *table, qint64 row) override;
    bool tableView_shouldSelectTableColumn(QObject *table, const QString &column) override;
    DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(QObject *table,
                                                                           const QMimeData *drag,
                                                                           qint64 row,
                                                                           int operation) override;

private:
    ShownContent shown() const;

    const Image *image_;
    const QString tab_ = QStringLiteral("1");
    const QStringList noHeaders_;
    const QList<QStringList> noRows_;
};

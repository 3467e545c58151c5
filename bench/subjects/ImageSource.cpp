// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "subjects/ImageSource.h"

#include "grid/GridPresentation.h"

ShownContent ImageSource::shown() const {
    return {tab_, image_->bytes, image_->text, noHeaders_, noRows_};
}

quint64 ImageSource::numberOfRowsInTableView(QObject *) {
    return rowCount(shown());
}

CellValue ImageSource::tableView_objectValueForTableColumn_row(QObject *, const QString &column,
                                                               qint64 row) {
    return cellValue(shown(), column, row);
}

bool ImageSource::tableView_shouldEditTableColumn_row(QObject *, const QString &, qint64) {
    return true;
}

void ImageSource::tableView_setObjectValue_forTableColumn_row(QObject *, const QString &,
                                                              const QString &, qint64) {}

bool ImageSource::tableView_shouldSelectRow(QObject *, qint64) {
    return true;
}

bool ImageSource::tableView_shouldSelectTableColumn(QObject *, const QString &) {
    return false;
}

DragOperation
ImageSource::tableView_validateDrop_proposedRow_proposedDropOperation(QObject *, const QMimeData *,
                                                                      qint64, int) {
    return DragOperation::None;
}

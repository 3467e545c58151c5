// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "grid/GridMarks.h"
#include "grid/GridSource.h"

#include <QAbstractTableModel>
#include <QList>

/// What the columns stand for, and so how they are titled.
enum class GridHeading {
    /// Address, sixteen bytes, characters.
    Bytes,
    /// The vector of a logic test and its pins.
    Pins,
};

/// The grid's contents as an item model: every cell is asked from the source when it is needed,
/// nothing is kept but the number of rows, which stays as it was at the last reload however the
/// source changes meanwhile.
class GridModel : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Role {
        /// bool: the cell is a failed field of a logic test.
        FailedRole = Qt::UserRole,
    };

    /// \a source must live longer than the model. \a table is the grid as the source knows it.
    GridModel(GridSource &source, QObject *table, QObject *parent = nullptr);

    /// Takes the number of rows anew and announces that every cell may have changed.
    void reloadData();
    /// Announces the bytes of \a changed, and rows that were added at the end: no reset, so that
    /// cursor, selection and editors keep their place. False, with nothing announced, if there are
    /// fewer rows than before.
    bool showChange(ByteRange changed);

    GridHeading heading() const { return heading_; }
    void setHeading(GridHeading heading);

    /// The value of a cell that the model has; what data() gives in one piece.
    CellValue cell(int row, int column) const;
    /// Asks \a marks as well which bytes stand out. They must outlive the model.
    void addMarks(const GridMarks &marks) { marks_ << &marks; }
    /// What stands out about the byte of a cell; nothing where a cell has no byte.
    ByteMark mark(int row, int column) const;
    /// True if no cell shows a byte or a field.
    bool isBlank() const;
    /// How many bytes the rows show, from the first on; 0 for results. Found by a few questions to
    /// the source, however many rows there are.
    qint64 byteCount() const;
    /// The bytes of \a range, all of which must exist, as their cells show them.
    QByteArray bytes(ByteRange range) const;
    /// The source's answer whether a column as a whole may be selected.
    bool maySelectColumn(int column) const;
    /// What column \a column holds, for people who cannot see the cells below it.
    QString columnDescription(int column) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Hands \a value to the source. True if the cell may be edited, whatever the source makes of
    /// the value.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    bool canDropMimeData(const QMimeData *drag, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    /// Nothing is ever dropped: false.
    bool dropMimeData(const QMimeData *drag, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

private:
    int sourceRows() const;
    QString title(int column) const;
    bool showsByte(int column) const;
    QString cellDescription(int row, int column) const;
    QString markWords(int row, int column) const;

    GridSource &source_;
    QObject *table_;
    QList<const GridMarks *> marks_;
    int rows_ = 0;
    GridHeading heading_ = GridHeading::Bytes;
};

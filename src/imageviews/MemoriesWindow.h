// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "image/OtherMemories.h"
#include "imageviews/FuseListModel.h"
#include "imageviews/ReadOnlyImage.h"

#include <QDialog>

class GridView;
class QLabel;
class QPushButton;
class QTableView;
class QTabWidget;

/// Shows what a Read brought besides code memory, to look at and to copy: bytes in a grid, fuses as
/// a list. It is beside the window and not in its way.
class MemoriesWindow final : public QDialog {
    Q_OBJECT

public:
    /// Beside \a window, and empty.
    explicit MemoriesWindow(QWidget *window);

    /// Shows \a memories instead of others, with \a remark, a translated sentence, above them.
    void showMemories(const ReadMemories &memories, const QString &remark);
    /// Lets the user save them if that \a isPossible at this moment.
    void setSaving(bool isPossible);

signals:
    /// The user wants them to be saved.
    void saveRequested();

private:
    /// A page with bytes.
    struct BytesPage {
        ReadOnlyImage image;
        GridView *grid = nullptr;
    };

    void makeGrid(BytesPage &page, OtherMemory memory);
    void makeFuses();
    void copyFuses() const;
    void fitColumns();
    void showPage(QWidget *page, OtherMemory memory, bool isThere);
    void fill(BytesPage &page, const ByteBuffer &bytes);

    QLabel *origin_;
    QLabel *remark_;
    QTabWidget *tabs_;
    BytesPage data_;
    BytesPage user_;
    FuseListModel fuses_;
    QTableView *fuseList_ = nullptr;
    QPushButton *save_ = nullptr;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "counts/GridPaths.h"

#include "base/Log.h"
#include "grid/CellEdit.h"
#include "grid/GridModel.h"
#include "grid/GridPresentation.h"
#include "image/TemporaryWorkspace.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "subjects/Samples.h"

#include <QTemporaryDir>

#include <memory>
#include <stdexcept>

namespace {

constexpr int rowsOfAPage = 40;
constexpr int editedRow = 1000;

class SilentLog final : public Log {
public:
    void write(const QString &) override {}
};

/// An image of 1 MiB in the grid and in the file that the tool gets.
class Image final : public GridSource {
public:
    Image() {
        settings_.setValue(settingsKeys::temp_output_file,
                           folder_.filePath(QStringLiteral("temp.bin")));
        save({0, bytes_->size()});
        model_.reloadData();
    }

    GridModel &model() { return model_; }

    quint64 numberOfRowsInTableView(QObject *) override { return rowCount(shown()); }
    CellValue tableView_objectValueForTableColumn_row(QObject *, const QString &column,
                                                      qint64 row) override {
        return cellValue(shown(), column, row);
    }
    bool tableView_shouldEditTableColumn_row(QObject *, const QString &, qint64) override {
        return true;
    }
    void tableView_setObjectValue_forTableColumn_row(QObject *, const QString &value,
                                                     const QString &column, qint64 row) override {
        const auto edit = commitEntry(*bytes_, text_.length(), value, column.toInt(), row);
        if (!edit)
            return;
        const ByteRange changed = {edit->offset, edit->bytesWritten};
        text_.update(bytes_, changed);
        save(changed);
    }
    bool tableView_shouldSelectRow(QObject *, qint64) override { return true; }
    bool tableView_shouldSelectTableColumn(QObject *, const QString &) override { return false; }
    DragOperation tableView_validateDrop_proposedRow_proposedDropOperation(QObject *,
                                                                           const QMimeData *,
                                                                           qint64, int) override {
        return DragOperation::None;
    }

private:
    ShownContent shown() const { return {tab_, bytes_, text_, noHeaders_, noRows_}; }
    void save(ByteRange changed) {
        if (!workspace_.write_output_data_to_temp_file(bytes_, changed))
            throw std::runtime_error("the image was not saved");
    }

    const QTemporaryDir folder_;
    SettingsStore settings_{folder_.filePath(QStringLiteral("velm.conf"))};
    SilentLog log_;
    TemporaryWorkspace workspace_{settings_, log_};
    const ByteBuffer bytes_ = std::make_shared<QByteArray>(asciiText(mebibyte));
    DisplayText text_{bytes_};
    const QString tab_ = QStringLiteral("1");
    const QStringList noHeaders_;
    const QList<QStringList> noRows_;
    GridModel model_{*this, nullptr};
};

std::function<void()> showingAPage() {
    const auto image = std::make_shared<Image>();
    return [image] {
        const GridModel &model = image->model();
        for (int row = 0; row < rowsOfAPage; ++row)
            for (int column = 0; column < model.columnCount(); ++column)
                if (model.index(row, column).data().toString().isEmpty())
                    throw std::runtime_error("a cell is empty");
    };
}

std::function<void()> editing() {
    const auto image = std::make_shared<Image>();
    return [image] {
        GridModel &model = image->model();
        const QModelIndex cell = model.index(editedRow, 1);
        model.setData(cell, QStringLiteral("7E"));
        if (cell.data().toString() != QStringLiteral("7E"))
            throw std::runtime_error("the entry was not taken");
    };
}

} // namespace

std::vector<HotPath> gridPaths() {
    return {{"page", showingAPage}, {"edit", editing}};
}

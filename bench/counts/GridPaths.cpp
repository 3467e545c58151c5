// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "counts/GridPaths.h"

#include "base/Log.h"
#include "grid/CellEdit.h"
#include "grid/GridModel.h"
#include "image/TemporaryWorkspace.h"
#include "settings/SettingsKeys.h"
#include "settings/SettingsStore.h"
#include "subjects/ImageSource.h"
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

/// Takes entries into an image and saves them into the file that the tool gets.
class EditedSource final : public ImageSource {
public:
    EditedSource(Image &image, TemporaryWorkspace &workspace)
        : ImageSource(image), image_(image), workspace_(workspace) {}

    void tableView_setObjectValue_forTableColumn_row(QObject *, const QString &value,
                                                     const QString &column, qint64 row) override {
        const auto edit =
            commitEntry(*image_.bytes, image_.text.length(), value, column.toInt(), row);
        if (!edit)
            return;
        const ByteRange changed = {edit->offset, edit->bytesWritten};
        image_.text.update(image_.bytes, changed);
        save(changed);
    }
    void save(ByteRange changed) {
        if (!workspace_.write_output_data_to_temp_file(image_.bytes, changed))
            throw std::runtime_error("the image was not saved");
    }

private:
    Image &image_;
    TemporaryWorkspace &workspace_;
};

/// An image of 1 MiB in the grid and in its file.
struct Grid {
    Grid() {
        settings.setValue(settingsKeys::temp_output_file,
                          folder.filePath(QStringLiteral("temp.bin")));
        source.save({0, image.bytes->size()});
        model.reloadData();
    }

    const QTemporaryDir folder;
    SettingsStore settings{folder.filePath(QStringLiteral("velm.conf"))};
    SilentLog log;
    TemporaryWorkspace workspace{settings, log};
    Image image{asciiText(mebibyte)};
    EditedSource source{image, workspace};
    GridModel model{source, nullptr};
};

std::function<void()> showingAPage() {
    const auto grid = std::make_shared<Grid>();
    return [grid] {
        const GridModel &model = grid->model;
        for (int row = 0; row < rowsOfAPage; ++row)
            for (int column = 0; column < model.columnCount(); ++column)
                if (model.index(row, column).data().toString().isEmpty())
                    throw std::runtime_error("a cell is empty");
    };
}

std::function<void()> editing() {
    const auto grid = std::make_shared<Grid>();
    return [grid] {
        GridModel &model = grid->model;
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

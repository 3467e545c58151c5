// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "exchange/RecordImport.h"
#include "files/ByteBuffer.h"
#include "formats/RecordFormat.h"

#include <QDialog>

#include <memory>
#include <optional>

namespace Ui {
class ImportWindow;
}

/// Shows what a file of records holds before it becomes a binary, and asks where that begins and
/// what its gaps are filled with. It is beside the window and not in its way, and gone once it is
/// closed. What becomes of the bytes is its owner's business: it stays open until it is told that
/// they were taken.
class ImportWindow final : public QDialog {
    Q_OBJECT

public:
    /// A file to import.
    struct File {
        QString path;
        ByteBuffer bytes; ///< not null
    };

    /// \a fill is offered for the gaps. Beside \a window.
    ImportWindow(File file, quint8 fill, QWidget *window);
    ~ImportWindow() override;

    Ui::ImportWindow &controls() { return *controls_; }
    const QString &path() const { return path_; }

    /// Says \a sentence: why the bytes were not taken.
    void showProblem(const QString &sentence);

signals:
    /// The user wants \a image as the binary.
    void imageChosen(const ByteBuffer &image);
    /// The user wants the file as it is.
    void rawChosen();

private:
    void connectControls();
    std::optional<RecordFormat> format() const;
    std::optional<qint64> base() const;
    std::optional<quint8> fill() const;
    void readFile();
    void readOn();
    void showFound();
    void showState();
    void showOutOfMemory();
    bool mayImport() const;
    QString resultText() const;
    void import();

    std::unique_ptr<Ui::ImportWindow> controls_;
    QString path_;
    RecordImport import_;
};

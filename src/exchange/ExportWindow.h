// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "exchange/RecordExport.h"
#include "files/ByteBuffer.h"
#include "formats/RecordFormat.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class ExportWindow;
}

/// Asks which bytes of an image are to be written, in what format and at what addresses. It is
/// beside the window and not in its way. Where the content goes is its owner's business.
class ExportWindow final : public QDialog {
    Q_OBJECT

public:
    enum class Image { ToBurn, Read };

    /// The image as it is now; may be null.
    using Images = std::function<ByteBuffer(Image)>;

    /// What is to become a file.
    struct Content {
        QByteArray bytes;
        std::optional<RecordFormat> format; ///< nothing for the bytes as they are
        Image image = Image::ToBurn;
        bool isWhole = false; ///< all bytes of the image are in it
    };

    /// Beside \a window, with \a image chosen.
    ExportWindow(Images images, Image image, QWidget *window);
    ~ExportWindow() override;

    Ui::ExportWindow &controls() { return *controls_; }

    /// An image may have changed.
    void refresh() { showState(); }

signals:
    /// The user wants \a image to be written, and it is about to be looked at.
    void aboutToWrite(ExportWindow::Image image);
    void written(const ExportWindow::Content &content);

private:
    /// What has been chosen, if it makes sense.
    struct Choice {
        ByteRange range; ///< of the image
        qint64 address = 0;
        bool isTooLong = false; ///< the text would be
    };

    void connectControls();
    Image image() const;
    std::optional<RecordFormat> format() const;
    std::optional<ByteRange> range(qint64 length) const;
    std::optional<Choice> choice() const;
    void showState();
    void showRecordLength(const std::optional<Choice> &choice);
    QString resultText(const std::optional<Choice> &choice) const;
    void write();

    std::unique_ptr<Ui::ExportWindow> controls_;
    Images images_;
    RecordExport export_;
    Content content_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "image/BlockChange.h"

#include <QDialog>
#include <QString>

#include <memory>

namespace Ui {
class FillWindow;
}

/// Asks which bytes are to be filled with what. It is beside the window and not in its way, and
/// gone once it is closed. Filling is left to its owner, who closes it once the bytes are filled.
class FillWindow final : public QDialog {
    Q_OBJECT

public:
    /// For an image of \a imageSize bytes, beside \a window.
    FillWindow(qint64 imageSize, QWidget *window);
    ~FillWindow() override;

    Ui::FillWindow &controls() { return *controls_; }

    /// Offers \a bytes to be filled; with none the addresses are still to be typed. Addresses count
    /// from the start, or from \a cursor.
    void offer(ByteRange bytes, qint64 cursor);
    /// The image has \a size bytes by now.
    void setImageSize(qint64 size);
    /// Says \a sentence: why the bytes were not filled.
    void showProblem(const QString &sentence);

signals:
    /// The user wants to fill \a where with \a content.
    void chosen(ByteRange where, const BlockContent &content);

private:
    struct Wanted {
        ByteRange where;
        BlockContent content;
        QString words; ///< what it will do
    };

    void connectControls();
    /// Each of them, or in words why there is none.
    Result<Wanted, QString> wanted() const;
    Result<ByteRange, QString> range() const;
    Result<QByteArray, QString> pattern() const;
    void showState();
    void fill();

    std::unique_ptr<Ui::FillWindow> controls_;
    qint64 imageSize_;
    qint64 cursor_ = 0;
};

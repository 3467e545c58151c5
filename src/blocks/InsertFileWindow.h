// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "files/StampedFile.h"
#include "image/BlockChange.h"

#include <QDialog>
#include <QString>

#include <memory>
#include <optional>

namespace Ui {
class InsertFileWindow;
}

/// Asks where the bytes of a file go, and whether they replace what is there. It is beside the
/// window and not in its way, and gone once it is closed. Changing the image is left to its owner,
/// who closes it once the bytes are taken.
class InsertFileWindow final : public QDialog {
    Q_OBJECT

public:
    /// Inserts \a file into an image of \a imageSize bytes; \a offset is offered, if there is one,
    /// and addresses may be typed from there. Beside \a window.
    InsertFileWindow(StampedFile file, std::optional<qint64> offset, qint64 imageSize,
                     QWidget *window);
    ~InsertFileWindow() override;

    Ui::InsertFileWindow &controls() { return *controls_; }
    const QString &path() const { return file_.path; }

    /// The image has \a size bytes by now.
    void setImageSize(qint64 size);
    /// Says \a sentence: why the bytes were not taken.
    void showProblem(const QString &sentence);

signals:
    /// The user wants \a change to be made.
    void chosen(const BlockChange &change);

private:
    struct Wanted {
        BlockChange change;
        QString words; ///< what it will do
    };
    /// Or why nothing can be done, in words.
    using WantedOrNot = Result<Wanted, QString>;

    WantedOrNot wanted() const;
    WantedOrNot overwriting(qint64 offset) const;
    WantedOrNot moving(qint64 offset) const;
    void showState();
    void insert();

    std::unique_ptr<Ui::InsertFileWindow> controls_;
    StampedFile file_;
    const qint64 cursor_;
    qint64 imageSize_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "exchange/ArrangingRun.h"
#include "exchange/OrderWords.h"
#include "exchange/RecordImport.h"
#include "files/ByteBuffer.h"
#include "files/FileStamp.h"
#include "files/StampedFile.h"
#include "formats/RecordFormat.h"

#include <QDialog>
#include <QHash>
#include <QList>

#include <memory>
#include <optional>

namespace Ui {
class ImportWindow;
}

/// Shows what a file holds before it becomes a binary, and asks where that begins, what its gaps
/// are filled with, in what order its bytes are, and which files are joined. It is beside the
/// window and not in its way, and gone once it is closed. What becomes of the bytes is left to its
/// owner, who closes it once they are taken.
class ImportWindow final : public QDialog {
    Q_OBJECT

public:
    /// What is offered.
    struct Offers {
        quint8 fill = erasedByte; ///< for the gaps
        ChipSize chip = {};       ///< that the bytes may be for
    };

    /// Beside \a window.
    ImportWindow(const StampedFile &file, const Offers &offers, QWidget *window);
    ~ImportWindow() override;

    /// The bytes may be for another chip than before.
    void setChip(const ChipSize &chip);

    Ui::ImportWindow &controls() { return *controls_; }
    const QString &path() const { return path_; }
    /// A file whose bytes are imported, and its stamp before they were read.
    struct Source {
        QString path;
        std::optional<FileStamp> stamp;
    };
    QList<Source> sources() const;
    /// What to call their bytes, without an ending.
    QString name() const;

    /// Adds \a file to those that are joined.
    void addPart(const StampedFile &file);
    /// Says \a sentence: why the bytes were not taken.
    void showProblem(const QString &sentence);

signals:
    /// The user wants \a image as the binary.
    void imageChosen(const ByteBuffer &image);
    /// The user wants the file as it is.
    void rawChosen();
    /// The user wants to choose another file to join.
    void partAsked();

private:
    /// How a file of records becomes an image.
    struct Flattening {
        qint64 base = 0;
        quint8 fill = 0;

        friend bool operator==(const Flattening &, const Flattening &) = default;
    };

    void connectControls();
    void offer(const Offers &offers);
    std::optional<RecordFormat> format() const;
    std::optional<qint64> base() const;
    std::optional<quint8> fill() const;
    void readFile();
    void readOn();
    void showFound();
    void prepare();
    void prepareImage();
    void arrange();
    void showState();
    void showOutOfMemory();
    void sayNoMemory();
    bool canBeRead() const;
    bool isAtWork() const { return import_.isMakingImage() || run_.isRunning(); }
    bool isJoining() const;
    QList<qint64> lengths() const;
    Result<void, NoArrangement> canBeArranged() const;
    bool mayImport() const;
    QString resultText() const;
    QString outcomeText() const;
    void import();
    void give();

    std::unique_ptr<Ui::ImportWindow> controls_;
    QString path_;
    QHash<QString, std::optional<FileStamp>> stamps_; ///< of all files that were read, by path
    RecordImport import_;
    Flattening flattening_; ///< of the image, or of the one that is being made
    ByteBuffer image_;      ///< of the file alone; null while it is not known
    ArrangingRun run_;
    QString problem_;
    bool wanted_ = false; ///< the user has pressed Import
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "exchange/ArrangingRun.h"
#include "exchange/OrderWords.h"
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

/// Asks which bytes of an image are to be written, in what format, at what addresses, in what order
/// and for how many chips, and tells their checksums. It is beside the window and not in its way.
/// Where the content goes is its owner's business.
class ExportWindow final : public QDialog {
    Q_OBJECT

public:
    enum class Image { ToBurn, Read };

    /// What it begins with.
    struct Offers {
        /// The image as it is now; may be null.
        std::function<ByteBuffer(Image)> images;
        Image image = Image::ToBurn; ///< chosen at first
        QString path = {};           ///< for the files of a split; absolute
        ChipSize chip = {};          ///< that the bytes may be for
    };

    /// What is to become a file, or several.
    struct Content {
        QList<QByteArray> files;
        std::optional<RecordFormat> format; ///< nothing for the bytes as they are
        Image image = Image::ToBurn;
        bool isWhole = false;    ///< all bytes of the image are in it
        QStringList paths;       ///< of the files of a split; else their owner asks for one
        bool mayReplace = false; ///< files that are at these paths already
        QString labels;          ///< the checksums, and what to write on the chips
    };

    /// Beside \a window.
    ExportWindow(const Offers &offers, QWidget *window);
    ~ExportWindow() override;

    Ui::ExportWindow &controls() { return *controls_; }

    /// An image may have changed.
    void refresh();
    /// The bytes may be for another chip than before.
    void setChip(const ChipSize &chip);
    /// How the names of the files of a split are to begin.
    QString name() const;
    void setName(const QString &path);
    /// Says \a sentence: why the content was not written.
    void showProblem(const QString &sentence);

signals:
    /// The user wants \a image to be written, and it is about to be looked at.
    void aboutToWrite(ExportWindow::Image image);
    void written(const ExportWindow::Content &content);
    /// The user wants to choose how the names of the files begin.
    void nameAsked();

private:
    /// What has been chosen, and makes sense.
    struct Choice {
        ByteRange range; ///< of the image
        Arrangement arrangement;
        qint64 partLength = 0; ///< in each file
        qint64 address = 0;    ///< of the first byte in each file
    };
    /// The choice, or a sentence why there is none.
    using ChosenNow = Result<Choice, QString>;

    /// What is arranged.
    struct Work {
        ByteBuffer image;
        ByteRange range;
        Arrangement arrangement;

        bool isSame(const Work &other) const;
    };

    void connectControls();
    Image image() const;
    ByteBuffer bytes() const { return offers_.images(image()); }
    std::optional<RecordFormat> format() const;
    std::optional<ByteRange> range(qint64 length) const;
    ChosenNow choice() const;
    ChosenNow placed(Choice choice) const;
    Result<void, QString> mayMakeFiles() const;
    QStringList paths() const;
    Result<QStringList, QString> takenPaths() const;
    bool isSplit() const;
    void choosesOtherFiles();
    void prepare();
    void showState();
    void showRecordLength(const Choice &choice);
    QString resultText(const ChosenNow &chosen) const;
    QString labelsText() const;
    QString sizeText(const Choice &choice) const;
    void copyLabels();
    void write();
    bool isWholeAsItStands(const Choice &choice) const;
    void writeOut();
    void writeNextText();
    void showOutOfMemory();

    std::unique_ptr<Ui::ExportWindow> controls_;
    Offers offers_;
    ArrangingRun run_;
    Work work_; ///< what the run is about
    RecordExport export_;
    Content content_;
    QList<QByteArray> toWrite_; ///< as text of records
    RecordLayout layout_;       ///< of that
    QString problem_;
    bool wanted_ = false; ///< the user has pressed Export
};

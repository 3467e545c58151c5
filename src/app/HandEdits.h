#pragma once

#include "image/ByteBuffer.h"

#include <QObject>
#include <QUndoStack>

struct CellEdit;

/// Which state of the data to burn it is. Equal revisions mean equal bytes: taking an edit back
/// brings the revision back that was there before it.
struct ImageState {
    quint64 revision = 0;
    /// How many edits made by hand are in these bytes.
    int edits = 0;
};

/// The edits of the data to burn since it was composed last: what was done, taken back and can be
/// made again. They change the image in place; nothing here writes or shows it.
class HandEdits final : public QObject {
    Q_OBJECT

public:
    /// An image with its edits, before a composition replaced it.
    struct Replaced {
        ByteBuffer image;
        ImageState state;
    };

    /// Works on the image that \a image refers to at each moment.
    explicit HandEdits(ByteBuffer &image, QObject *parent = nullptr);
    ~HandEdits() override;

    /// The image was composed anew and its bytes have the number \a revision: there is nothing to
    /// take back any more.
    void composed(quint64 revision);
    /// Remembers \a edit, which was carried out already. An entry that changed no byte is none.
    void remember(const CellEdit &edit);
    /// Puts \a replaced in the place of the image, as one step that can be taken back.
    void restore(const Replaced &replaced);
    /// Takes the last step back, or makes it again. Nothing happens if there is none.
    void undo();
    void redo();

    /// What is in the image now.
    ImageState state() const;
    /// The image as it is now has been saved in a file of the user's.
    void noteSaved();
    /// True if the image has edits and is, as it is now, in no file of the user's.
    bool areUnsaved() const;
    /// The steps, to look at.
    const QUndoStack &history() const { return history_; }

signals:
    /// A step was taken back or made (again), other than by remember(); the first byte that it
    /// changed is at \a offset.
    void imageChanged(qint64 offset);

private:
    class Step;
    class ByteStep;
    class ImageStep;

    quint64 nextRevision();
    const Step &stepAt(int index) const;

    ByteBuffer &image_;
    QUndoStack history_;
    ImageState composed_;
    quint64 saved_ = 0;
    quint64 lastRevision_ = 0;
};

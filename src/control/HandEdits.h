// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "image/CompositionRemarks.h"
#include "image/EditedBytes.h"

#include <QObject>
#include <QSet>
#include <QUndoStack>

struct CellEdit;

/// Which state of the data to burn it is. Equal revisions mean equal bytes: taking an edit back
/// brings the revision back that was there before it.
struct ImageState {
    quint64 revision = 0;
    /// How many edits made by hand are in these bytes.
    int edits = 0;
    /// What the controls said when the image was composed.
    ImageControls madeWith;
    /// Whose bytes were composed; nothing if there was only padding.
    std::optional<CompositionSource> source = {};
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
        EditedBytes edited;
    };

    /// Numbers of edits in the image as it is now, and in the replaced ones.
    struct Unsaved {
        int present = 0;
        int replaced = 0;
    };

    /// How many replaced images are kept, and how many bytes of them beside the newest.
    static constexpr qsizetype maxReplaced = 8;
    static constexpr qsizetype maxReplacedBytes = qsizetype(256) << 20;

    /// Works on the image that \a image refers to at each moment.
    explicit HandEdits(ByteBuffer &image, QObject *parent = nullptr);
    ~HandEdits() override;

    /// The image is about to be composed anew: if it has edits, it is kept to be restored.
    void keepReplaced();
    /// The image was composed anew and is \a state: there is nothing to take back any more. A
    /// replaced image with the very same bytes is forgotten.
    void composed(const ImageState &state);
    /// Remembers \a edit, which was carried out already. An entry that changed no byte is none.
    void remember(const CellEdit &edit);
    /// Makes \a change, which must have no trouble, as one step that is called \a name
    /// (translated). blockChanged() follows, unless every byte was that already: then there is no
    /// step. Throws std::bad_alloc, with image and history untouched, where there is no memory for
    /// it.
    void change(const BlockChange &change, const QString &name);
    /// The images that were replaced with their edits and not restored, the newest last.
    const QList<Replaced> &replaced() const { return replaced_; }
    /// Puts the newest replaced image in the place of the image, as one step that can be taken
    /// back. There must be one.
    void restore();
    /// Takes the last step back, or makes it again. Nothing happens if there is none. Throws
    /// std::bad_alloc, with image and history untouched, where there is no memory for it.
    void undo();
    void redo();

    /// The image that the edits are made in.
    const ByteBuffer &image() const { return image_; }
    /// Which of its bytes were edited since it was composed; not those whose edits were taken back.
    const EditedBytes &edited() const { return edited_; }
    /// What is in the image now.
    ImageState state() const;
    /// The image as it is now has been saved in a file of the user's.
    void noteSaved();
    /// How many edits are in no file of the user's.
    Unsaved unsaved() const;
    /// The steps, to look at.
    const QUndoStack &history() const { return history_; }

signals:
    /// A step was taken back or made (again), other than by remember() or change(), and the bytes
    /// of \a changed are other ones, or gone.
    void imageChanged(ByteRange changed);
    /// A change was made, and the bytes of \a changed are other ones.
    void blockChanged(ByteRange changed);

private:
    class Step;
    class BlockStep;
    class ImageStep;

    ImageState stateAfterEdit();
    void noteEditedAnew();
    const Step &stepAt(int index) const;

    ByteBuffer &image_;
    QUndoStack history_;
    ImageState composed_;
    EditedBytes edited_;
    QList<Replaced> replaced_;
    QSet<quint64> saved_; ///< revisions
    quint64 lastRevision_ = 0;
};

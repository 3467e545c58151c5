// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Units.h"
#include "files/ByteBuffer.h"
#include "image/CompositionRemarks.h"
#include "image/EditedBytes.h"
#include "image/ImageComposition.h"

#include <QSet>
#include <QUndoStack>

#include <memory>
#include <optional>

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
    /// It has come back, in the place of an image that was composed later.
    bool isRestored = false;
};

/// The edits of the data to burn since it was composed last: what was done, taken back and can be
/// made again. They change the image in place; nothing here writes or shows it.
class HandEdits final {
public:
    /// An image with its edits, before another took its place.
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
    static constexpr qsizetype maxReplacedBytes = 256 * mebibyte;

    /// How many bytes the steps keep, beside the newest.
    static constexpr qint64 maxKeptBytes = 2 * gibibyte;

    /// Works on the image that \a image refers to at each moment. Its steps keep no more than
    /// \a maxStepBytes: for a new one that exceeds them the oldest are forgotten, for good.
    explicit HandEdits(ByteBuffer &image, qint64 maxStepBytes = maxKeptBytes);
    ~HandEdits();
    HandEdits(const HandEdits &) = delete;
    HandEdits &operator=(const HandEdits &) = delete;

    /// The image is about to be composed anew: if it has edits, it is kept to be restored.
    void keepReplaced();
    /// The image was composed anew and is \a state: there is nothing to take back any more. A
    /// replaced image with the very same bytes is forgotten, and the oldest where there are too
    /// many.
    void composed(const ImageState &state);
    /// Remembers \a edit, which was carried out already. An entry that changed no byte is none.
    void remember(const CellEdit &edit);
    /// Makes \a change, which it must be possible to make, as one step that is called \a name
    /// (translated), and gives the bytes that are other ones, or gone. Nothing if every byte was
    /// like that already: then there is no step. Throws std::bad_alloc, with image and history
    /// untouched, where there is no memory for it.
    std::optional<ByteRange> change(const BlockChange &change, const QString &name);
    /// The images with edits that are not there now, be it that a composition replaced them or that
    /// another was restored in their place; last the one that restore() brings.
    const QList<Replaced> &replaced() const { return replaced_; }
    /// True if images older than those were dropped, for want of room, with edits that are in no
    /// file of the user's.
    bool hasDropped() const { return hasDropped_; }
    /// Puts the last of the replaced images in the place of the image, as one step that can be
    /// taken back, and gives the bytes that are other ones, or gone. There must be one. If the
    /// image has edits, it is the first of the replaced ones then, until the step is taken back.
    ByteRange restore();
    /// Takes the last step back, or makes it again, and gives the bytes that are other ones, or
    /// gone. Nothing happens if there is none. Throws std::bad_alloc, with image and history
    /// untouched, where there is no memory for it.
    std::optional<ByteRange> undo();
    std::optional<ByteRange> redo();
    /// True if older steps were forgotten for the one that was made last.
    bool hasForgotten() const { return hasForgotten_; }

    /// The image that the edits are made in.
    const ByteBuffer &image() const { return image_; }
    /// Which of its bytes were edited since it was composed; not those whose edits were taken back.
    const EditedBytes &edited() const { return edited_; }
    /// The revision of the image as it is now, how many edits are in it, and what it was composed
    /// of.
    ImageState state() const;
    /// The image as it is now has been saved in a file of the user's.
    void noteSaved();
    /// How many edits are in no file of the user's.
    Unsaved unsaved() const;
    /// The steps, to look at.
    const QUndoStack &history() const { return history_; }

private:
    class Step;
    class BlockStep;
    class ImageStep;
    class Entry;

    ImageState stateAfterEdit();
    void push(std::unique_ptr<Entry> entry);
    void forgetOldest();
    void dropReplaced();
    qsizetype oldestReplaced() const;
    const Entry &entryAt(int index) const;
    const Step &stepAt(int index) const;

    ByteBuffer &image_;
    const qint64 maxStepBytes_;
    QUndoStack history_;
    ImageState before_;        ///< before the first step
    EditedBytes editedBefore_; ///< before the first step, too
    EditedBytes edited_;
    bool hasForgotten_ = false;
    QList<Replaced> replaced_;
    bool hasDropped_ = false;
    QSet<quint64> saved_; ///< revisions
    quint64 lastRevision_ = 0;
};

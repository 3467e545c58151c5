// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/SecondPress.h"
#include "files/ByteBuffer.h"
#include "image/BlockChange.h"
#include "image/CompositionRemarks.h"

#include <QObject>

#include <functional>
#include <optional>

class ActionGate;
class EditedBytes;
class HandEdits;
class QUndoStack;
struct ImageState;

/// What the user can do with the edits of the data to burn: take them back, make them again,
/// bring back those that a composition replaced; and what the window says of them, so that none
/// is lost without a word.
class EditOffers final : public QObject {
    Q_OBJECT

public:
    /// What the offers work with; all must outlive them.
    struct Surroundings {
        HandEdits &edits;
        Messages &messages;
        SecondPress &secondPress;
        const ActionGate &gate;
        /// What the controls of the composition say at the moment of the call.
        std::function<ImageControls()> controls;
    };

    explicit EditOffers(const Surroundings &surroundings);

    /// Takes the last edit back, or makes it again; the whole entry that is being typed counts as
    /// one. Nothing happens if there is none, or while the tool works.
    void undo();
    void redo();
    /// Puts the newest image that was replaced with its edits in the place of the data to burn.
    /// Nothing happens if there is none, or while the tool works.
    void restore();
    /// A change of a block, and what is said of it; both texts are translated.
    struct Block {
        BlockChange change;
        QString name; ///< in the menu entry that takes it back
        QString done;
    };

    /// Changes the data to burn, as one edit, and says so, or that every byte was like that
    /// already. False, and said, if that cannot be or there is no memory for it, or while the tool
    /// works.
    bool change(const Block &block);
    /// Fills \a bytes with \a content, or with 00, as change() does.
    bool fill(ByteRange bytes, const BlockContent &content);
    bool writeZeros(ByteRange bytes);
    /// Does \a work, which must be the edit alone: what shows an edit may not be given up once it
    /// is made. False, and said, if there is no memory for it.
    bool tryEdit(const std::function<void()> &work);
    /// The edits, to look at.
    const QUndoStack &history() const;
    /// What is in the data to burn now.
    ImageState state() const;
    /// Which bytes of them were edited.
    const EditedBytes &edited() const;

    /// Says that \a entry, typed into the cell of the byte at \a offset, was not taken. A zero can
    /// be written there all the same.
    void sayRejected(const QString &entry, qint64 offset);

    /// What the user is told of a composition.
    struct CompositionWords {
        QString remarks; ///< sentences (translated), or nothing
        bool isRefused = false;
    };

    /// The data to burn were composed anew: says \a words, and again whenever the image that has
    /// taken the place of that one is taken back, and how many edits wait to be restored.
    void sayComposed(const CompositionWords &words);
    /// Says how many \a edits have just come back, if any, and which controls are no longer as the
    /// image was made with.
    void sayRestored(int edits = 0);
    /// Says so if older edits were forgotten for the last one.
    void sayForgotten();
    /// \a bytes are in a file of the user's now: if they are the data to burn, their edits are
    /// safe.
    void noteSaved(const ByteBuffer &bytes);
    /// True, and said, if closing now would lose edits that are in no file; a second call is taken
    /// for the consent of \a presser.
    bool refusesToLose(SecondPress::Presser presser);

signals:
    /// A change was made, and the bytes of \a bytes are other ones, or gone.
    void changed(ByteRange bytes);
    /// An edit was taken back or made again, or an image restored; \a bytes are as in changed().
    void stepped(ByteRange bytes);
    /// An image with its edits has been restored.
    void restored();
    /// The user wants the data to burn in a file.
    void saveAsked();

private:
    void step(std::optional<ByteRange> (HandEdits::*way)());
    void sayHowItCameOut();
    void sayReplaced();
    SecondPress::Question aboutPresent(int edits);
    SecondPress::Question aboutReplaced(int edits);

    HandEdits &edits_;
    Messages &messages_;
    SecondPress &secondPress_;
    const ActionGate &gate_;
    std::function<ImageControls()> controls_;
    CompositionWords lastComposition_;
};

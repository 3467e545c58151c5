// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/HandEdits.h"

#include "grid/CellEdit.h"

#include <QCoreApplication>

#include <utility>

namespace {

/// Compositions are numbered from 1 on; edits get numbers that those never reach.
constexpr quint64 firstEditRevision = quint64(1) << 32;

} // namespace

/// A step knows the state that it leads to; the one before it is that of the step before.
class HandEdits::Step : public QUndoCommand {
public:
    Step(ByteBuffer &image, const ImageState &after, ByteRange changed)
        : image_(image), after_(after), changed_(changed) {}

    const ImageState &after() const { return after_; }
    ByteRange changed() const { return changed_; }
    /// Lets \a edited, which knows of the steps before, know of this one.
    virtual void noteIn(EditedBytes &edited) const = 0;

protected:
    ByteBuffer &image() const { return image_; }

private:
    ByteBuffer &image_;
    ImageState after_;
    ByteRange changed_;
};

/// Bytes that other ones came in the place of.
class HandEdits::BlockStep final : public Step {
public:
    BlockStep(ByteBuffer &image, const ImageState &after, BlockChange change, ByteRange touched,
              QByteArray replaced)
        : Step(image, after, touched), change_(std::move(change)), replaced_(std::move(replaced)) {}

    void undo() override {
        takeBackChange(*image(), change_, replaced_);
        made_ = false;
    }
    // The history calls this for a new step too, which is made already.
    void redo() override {
        if (!made_)
            makeChange(*image(), change_);
        made_ = true;
    }
    void noteIn(EditedBytes &edited) const override { edited.note(change_); }

private:
    BlockChange change_;
    QByteArray replaced_;
    bool made_ = true;
};

/// Another image in the place of the one that was there.
class HandEdits::ImageStep final : public Step {
public:
    ImageStep(ByteBuffer &image, const Replaced &other)
        : Step(image, other.state, {0, std::max(lengthOf(image), lengthOf(other.image))}),
          other_(other.image),
          edited_(other.edited) {
        setText(QCoreApplication::translate("HandEdits", "restoring"));
    }

    void undo() override { std::swap(image(), other_); }
    void redo() override { std::swap(image(), other_); }
    void noteIn(EditedBytes &edited) const override { edited = edited_; }

private:
    ByteBuffer other_;
    EditedBytes edited_;
};

HandEdits::HandEdits(ByteBuffer &image, QObject *parent)
    : QObject(parent), image_(image), lastRevision_(firstEditRevision) {}

HandEdits::~HandEdits() = default;

ImageState HandEdits::stateAfterEdit() {
    ImageState after = state();
    after.revision = ++lastRevision_;
    ++after.edits;
    return after;
}

void HandEdits::keepReplaced() {
    if (state().edits == 0)
        return;
    replaced_.append({image_, state(), edited_});
    qsizetype bytes = 0;
    for (const Replaced &replaced : std::as_const(replaced_))
        bytes += lengthOf(replaced.image);
    while (replaced_.size() > 1 && (replaced_.size() > maxReplaced || bytes > maxReplacedBytes))
        bytes -= lengthOf(replaced_.takeFirst().image);
}

void HandEdits::composed(const ImageState &state) {
    history_.clear();
    edited_ = {};
    composed_ = state;
    const bool lostNothing = image_ && !replaced_.isEmpty() && *replaced_.last().image == *image_;
    if (lostNothing)
        replaced_.removeLast();
}

void HandEdits::remember(const CellEdit &edit) {
    const QByteArray written = std::as_const(*image_).mid(edit.offset, edit.bytesWritten);
    if (written == edit.replaced)
        return;
    const BlockChange change{edit.offset, edit.replaced.size(), written.size(),
                             RepeatedBytes{written}};
    history_.push(new BlockStep(image_, stateAfterEdit(), change, change.written(), edit.replaced));
    edited_.note(change);
}

void HandEdits::change(const BlockChange &change, const QString &name) {
    const QByteArray replaced = replacedBytes(*image_, change);
    const ByteRange touched = touchedBy(change, lengthOf(image_));
    auto step = std::make_unique<BlockStep>(image_, stateAfterEdit(), change, touched, replaced);
    step->setText(name);
    makeChange(*image_, change);
    const QByteArrayView now = QByteArrayView(std::as_const(*image_)).sliced(change.offset);
    if (change.length == replaced.size() && now.startsWith(replaced))
        return;
    history_.push(step.release());
    edited_.note(change);
    emit blockChanged(touched);
}

void HandEdits::restore() {
    const Replaced newest = replaced_.takeLast();
    history_.push(new ImageStep(image_, newest));
    edited_ = newest.edited;
    emit imageChanged(stepAt(history_.index() - 1).changed());
}

void HandEdits::undo() {
    if (!history_.canUndo())
        return;
    const ByteRange changed = stepAt(history_.index() - 1).changed();
    history_.undo();
    noteEditedAnew();
    emit imageChanged(changed);
}

void HandEdits::redo() {
    if (!history_.canRedo())
        return;
    const ByteRange changed = stepAt(history_.index()).changed();
    history_.redo();
    stepAt(history_.index() - 1).noteIn(edited_);
    emit imageChanged(changed);
}

void HandEdits::noteEditedAnew() {
    edited_ = {};
    for (int index = 0; index < history_.index(); ++index)
        stepAt(index).noteIn(edited_);
}

const HandEdits::Step &HandEdits::stepAt(int index) const {
    return *static_cast<const Step *>(history_.command(index));
}

ImageState HandEdits::state() const {
    return history_.index() == 0 ? composed_ : stepAt(history_.index() - 1).after();
}

void HandEdits::noteSaved() {
    saved_.insert(state().revision);
}

HandEdits::Unsaved HandEdits::unsaved() const {
    const auto unsavedOf = [this](const ImageState &image) {
        return saved_.contains(image.revision) ? 0 : image.edits;
    };
    Unsaved unsaved{.present = unsavedOf(state())};
    for (const Replaced &replaced : replaced_)
        unsaved.replaced += unsavedOf(replaced.state);
    return unsaved;
}

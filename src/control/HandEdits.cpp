// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/HandEdits.h"

#include "grid/CellEdit.h"

#include <QCoreApplication>

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

protected:
    ByteBuffer &image() const { return image_; }

private:
    ByteBuffer &image_;
    ImageState after_;
    ByteRange changed_;
};

/// Bytes that were overwritten, and appended where they are more than before.
class HandEdits::ByteStep final : public Step {
public:
    ByteStep(ByteBuffer &image, const ImageState &after, qint64 offset, QByteArray before,
             QByteArray now)
        : Step(image, after, {offset, now.size()}),
          before_(std::move(before)),
          now_(std::move(now)) {}

    void undo() override {
        replace(now_.size(), before_);
        made_ = false;
    }
    // The history calls this for a new step too, which is made already.
    void redo() override {
        if (!made_)
            replace(before_.size(), now_);
        made_ = true;
    }

private:
    // Memory is asked for before a byte is touched.
    void replace(qsizetype length, const QByteArray &bytes) const {
        image()->reserve(std::max(image()->capacity(), image()->size() - length + bytes.size()));
        image()->replace(changed().offset, length, bytes);
    }

    QByteArray before_;
    QByteArray now_;
    bool made_ = true;
};

/// Another image in the place of the one that was there.
class HandEdits::ImageStep final : public Step {
public:
    ImageStep(ByteBuffer &image, const ImageState &after, ByteBuffer other)
        : Step(image, after, {0, std::max(lengthOf(image), lengthOf(other))}),
          other_(std::move(other)) {
        setText(QCoreApplication::translate("HandEdits", "restoring"));
    }

    void undo() override { std::swap(image(), other_); }
    void redo() override { std::swap(image(), other_); }

private:
    ByteBuffer other_;
};

HandEdits::HandEdits(ByteBuffer &image, QObject *parent)
    : QObject(parent), image_(image), lastRevision_(firstEditRevision) {}

HandEdits::~HandEdits() = default;

quint64 HandEdits::nextRevision() {
    return ++lastRevision_;
}

void HandEdits::keepReplaced() {
    if (state().edits == 0)
        return;
    replaced_.append({image_, state()});
    qsizetype bytes = 0;
    for (const Replaced &replaced : std::as_const(replaced_))
        bytes += lengthOf(replaced.image);
    while (replaced_.size() > 1 && (replaced_.size() > maxReplaced || bytes > maxReplacedBytes))
        bytes -= lengthOf(replaced_.takeFirst().image);
}

void HandEdits::composed(const ImageState &state) {
    history_.clear();
    composed_ = state;
    const bool lostNothing = image_ && !replaced_.isEmpty() && *replaced_.last().image == *image_;
    if (lostNothing)
        replaced_.removeLast();
}

void HandEdits::remember(const CellEdit &edit) {
    const QByteArray written = std::as_const(*image_).mid(edit.offset, edit.bytesWritten);
    if (written == edit.replaced)
        return;
    ImageState after = state();
    after.revision = nextRevision();
    ++after.edits;
    history_.push(new ByteStep(image_, after, edit.offset, edit.replaced, written));
}

void HandEdits::restore() {
    const Replaced newest = replaced_.takeLast();
    history_.push(new ImageStep(image_, newest.state, newest.image));
    emit imageChanged(stepAt(history_.index() - 1).changed());
}

void HandEdits::undo() {
    if (!history_.canUndo())
        return;
    const ByteRange changed = stepAt(history_.index() - 1).changed();
    history_.undo();
    emit imageChanged(changed);
}

void HandEdits::redo() {
    if (!history_.canRedo())
        return;
    const ByteRange changed = stepAt(history_.index()).changed();
    history_.redo();
    emit imageChanged(changed);
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

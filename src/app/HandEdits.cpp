#include "app/HandEdits.h"

#include "grid/CellEdit.h"

namespace {

// Compositions are numbered from 1 on; edits get numbers that those never reach.
constexpr quint64 firstEditRevision = quint64(1) << 32;

} // namespace

/// A step knows the state that it leads to; the one before it is that of the step before.
class HandEdits::Step : public QUndoCommand {
public:
    Step(ByteBuffer &image, const ImageState &after, qint64 offset)
        : image_(image), after_(after), offset_(offset) {}

    const ImageState &after() const { return after_; }
    qint64 offset() const { return offset_; }

protected:
    ByteBuffer &image() const { return image_; }

private:
    ByteBuffer &image_;
    ImageState after_;
    qint64 offset_;
};

/// Bytes that were overwritten, and appended where they are more than before.
class HandEdits::ByteStep final : public Step {
public:
    ByteStep(ByteBuffer &image, const ImageState &after, qint64 offset, QByteArray before,
             QByteArray now)
        : Step(image, after, offset), before_(std::move(before)), now_(std::move(now)) {}

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
    void replace(qsizetype length, const QByteArray &bytes) const {
        image()->replace(offset(), length, bytes);
    }

    QByteArray before_;
    QByteArray now_;
    bool made_ = true;
};

/// Another image in the place of the one that was there.
class HandEdits::ImageStep final : public Step {
public:
    ImageStep(ByteBuffer &image, const ImageState &after, ByteBuffer other)
        : Step(image, after, 0), other_(std::move(other)) {}

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

void HandEdits::composed(quint64 revision) {
    history_.clear();
    composed_ = {revision, 0};
}

void HandEdits::remember(const CellEdit &edit) {
    const QByteArray written = std::as_const(*image_).mid(edit.offset, edit.bytesWritten);
    if (written == edit.replaced)
        return;
    const ImageState after{nextRevision(), state().edits + 1};
    history_.push(new ByteStep(image_, after, edit.offset, edit.replaced, written));
}

void HandEdits::restore(const Replaced &replaced) {
    history_.push(new ImageStep(image_, replaced.state, replaced.image));
    emit imageChanged(0);
}

void HandEdits::undo() {
    if (!history_.canUndo())
        return;
    const qint64 offset = stepAt(history_.index() - 1).offset();
    history_.undo();
    emit imageChanged(offset);
}

void HandEdits::redo() {
    if (!history_.canRedo())
        return;
    const qint64 offset = stepAt(history_.index()).offset();
    history_.redo();
    emit imageChanged(offset);
}

const HandEdits::Step &HandEdits::stepAt(int index) const {
    return *static_cast<const Step *>(history_.command(index));
}

ImageState HandEdits::state() const {
    return history_.index() == 0 ? composed_ : stepAt(history_.index() - 1).after();
}

void HandEdits::noteSaved() {
    saved_ = state().revision;
}

bool HandEdits::areUnsaved() const {
    const ImageState now = state();
    return now.edits > 0 && now.revision != saved_;
}

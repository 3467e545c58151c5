// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/HandEdits.h"

#include "grid/CellEdit.h"
#include "image/BlockChange.h"

#include <QByteArrayView>
#include <QCoreApplication>

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

namespace {

/// Compositions are numbered from 1 on; edits get numbers that those never reach.
constexpr quint64 firstEditRevision = quint64(1) << 32;

} // namespace

/// A step knows the state that it leads to; the one before it is that of the step before.
class HandEdits::Step {
public:
    Step(ByteBuffer &image, const ImageState &after, ByteRange changed)
        : image_(image), after_(after), changed_(changed) {}
    virtual ~Step() = default;
    Step(const Step &) = delete;
    Step &operator=(const Step &) = delete;

    virtual void takeBack() = 0;
    virtual void make() = 0;
    /// Lets \a edited, which knows of the steps before, know of this one.
    virtual void noteIn(EditedBytes &edited) const = 0;
    /// How many bytes it keeps.
    virtual qint64 bytesKept() const = 0;

    const ImageState &after() const { return after_; }
    ByteRange changed() const { return changed_; }

protected:
    ByteBuffer &image() const { return image_; }

private:
    ByteBuffer &image_;
    ImageState after_;
    ByteRange changed_;
};

/// A block of bytes that took the place of others.
class HandEdits::BlockStep final : public Step {
public:
    BlockStep(ByteBuffer &image, const ImageState &after, BlockChange change, ByteRange touched,
              QByteArray replaced)
        : Step(image, after, touched), change_(std::move(change)), replaced_(std::move(replaced)) {}

    void takeBack() override { takeBackChange(*image(), change_, replaced_); }
    void make() override { makeChange(*image(), change_); }
    void noteIn(EditedBytes &edited) const override { edited.note(change_); }
    qint64 bytesKept() const override {
        const auto *repeated = std::get_if<RepeatedBytes>(&change_.content);
        return replaced_.size() + (repeated ? repeated->pattern.size() : 0);
    }

private:
    BlockChange change_;
    QByteArray replaced_;
};

/// The newest replaced image in the place of the one that was there, which is replaced by that.
/// What leaves joins the far end of the list, so that restoring leads to every image in turn.
class HandEdits::ImageStep final : public Step {
public:
    /// There must be an image in \a replaced; \a left is the one that is there now.
    ImageStep(ByteBuffer &image, QList<Replaced> &replaced, const Replaced &left)
        : Step(image, replaced.last().state,
               {0, std::max(lengthOf(left.image), lengthOf(replaced.last().image))}),
          replaced_(replaced),
          left_(left),
          other_(replaced.last()) {}

    void takeBack() override;
    void make() override;
    void noteIn(EditedBytes &edited) const override { edited = other_.edited; }
    qint64 bytesKept() const override { return lengthOf(left_.image); }

private:
    QList<Replaced> &replaced_;
    Replaced left_;
    Replaced other_;
};

// All that takes memory comes first, here and in the way back.
void HandEdits::ImageStep::make() {
    Replaced left = left_;
    image() = other_.image;
    if (left.state.edits == 0)
        return replaced_.removeLast();
    replaced_.last() = std::move(left);
    std::rotate(replaced_.begin(), replaced_.end() - 1, replaced_.end());
}

void HandEdits::ImageStep::takeBack() {
    Replaced other = other_;
    if (left_.state.edits == 0) {
        replaced_.append(std::move(other));
    } else {
        replaced_.first() = std::move(other);
        std::rotate(replaced_.begin(), replaced_.begin() + 1, replaced_.end());
    }
    image() = left_.image;
}

/// A step in the history, pushed when it has been made already.
class HandEdits::Entry final : public QUndoCommand {
public:
    Entry(std::shared_ptr<Step> step, const QString &name)
        : QUndoCommand(name), step_(std::move(step)) {}

    const std::shared_ptr<Step> &step() const { return step_; }
    void undo() override {
        step_->takeBack();
        made_ = false;
    }
    // The history calls this for a new entry, too.
    void redo() override {
        if (!made_)
            step_->make();
        made_ = true;
    }

private:
    std::shared_ptr<Step> step_;
    bool made_ = true;
};

HandEdits::HandEdits(ByteBuffer &image, qint64 maxStepBytes)
    : image_(image), maxStepBytes_(maxStepBytes), lastRevision_(firstEditRevision) {}

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
    if (replaced_.isEmpty())
        hasDropped_ = false;
    replaced_.append({image_, state(), edited_});
}

void HandEdits::dropReplaced() {
    qsizetype bytes = 0;
    for (const Replaced &replaced : std::as_const(replaced_))
        bytes += lengthOf(replaced.image);
    while (replaced_.size() > 1 &&
           (replaced_.size() > maxReplaced ||
            bytes - lengthOf(replaced_.constLast().image) > maxReplacedBytes)) {
        const Replaced oldest = replaced_.takeAt(oldestReplaced());
        bytes -= lengthOf(oldest.image);
        hasDropped_ = hasDropped_ || !saved_.contains(oldest.state.revision);
    }
}

// Of those beside the newest. Restoring changes their order, but not when they were edited.
qsizetype HandEdits::oldestReplaced() const {
    const auto editedEarlier = [](const Replaced &one, const Replaced &other) {
        return one.state.revision < other.state.revision;
    };
    return std::min_element(replaced_.cbegin(), replaced_.cend() - 1, editedEarlier) -
           replaced_.cbegin();
}

void HandEdits::composed(const ImageState &state) {
    history_.clear();
    edited_ = {};
    editedBefore_ = {};
    before_ = state;
    hasForgotten_ = false;
    const bool lostNothing = image_ && !replaced_.isEmpty() && *replaced_.last().image == *image_;
    if (lostNothing)
        replaced_.removeLast();
    dropReplaced();
    for (Replaced &replaced : replaced_)
        replaced.state.isRestored = true; // once it is back
}

void HandEdits::remember(const CellEdit &edit) {
    const QByteArray written = std::as_const(*image_).mid(edit.offset, edit.bytesWritten);
    if (written == edit.replaced)
        return;
    const BlockChange change{edit.offset, edit.replaced.size(), written.size(),
                             RepeatedBytes{written}};
    push(std::make_unique<Entry>(std::make_shared<BlockStep>(image_, stateAfterEdit(), change,
                                                             change.written(), edit.replaced),
                                 QString()));
    edited_.note(change);
}

// All that takes memory comes before the first byte is changed.
std::optional<ByteRange> HandEdits::change(const BlockChange &change, const QString &name) {
    EditedBytes edited = edited_;
    edited.note(change);
    const QByteArray replaced = replacedBytes(*image_, change);
    const ByteRange touched = touchedBy(change, lengthOf(image_));
    auto entry = std::make_unique<Entry>(
        std::make_shared<BlockStep>(image_, stateAfterEdit(), change, touched, replaced), name);
    makeChange(*image_, change);
    const QByteArrayView now = QByteArrayView(std::as_const(*image_)).sliced(change.offset);
    if (change.length == replaced.size() && now.startsWith(replaced))
        return std::nullopt;
    push(std::move(entry));
    edited_ = std::move(edited);
    return touched;
}

ByteRange HandEdits::restore() {
    EditedBytes edited = replaced_.last().edited;
    const auto step =
        std::make_shared<ImageStep>(image_, replaced_, Replaced{image_, state(), edited_});
    auto entry =
        std::make_unique<Entry>(step, QCoreApplication::translate("HandEdits", "restoring"));
    step->make();
    push(std::move(entry));
    edited_ = std::move(edited);
    return step->changed();
}

void HandEdits::push(std::unique_ptr<Entry> entry) {
    history_.push(entry.release());
    forgetOldest();
}

// The newest step stays, however much it keeps.
void HandEdits::forgetOldest() {
    const int count = history_.count();
    int kept = 1;
    qint64 bytes = stepAt(count - 1).bytesKept();
    while (kept < count && bytes + stepAt(count - kept - 1).bytesKept() <= maxStepBytes_)
        bytes += stepAt(count - ++kept).bytesKept();
    hasForgotten_ = kept < count;
    if (!hasForgotten_)
        return;
    std::vector<std::unique_ptr<Entry>> entries;
    for (int index = count - kept; index < count; ++index)
        entries.push_back(std::make_unique<Entry>(entryAt(index).step(), entryAt(index).text()));
    for (int index = 0; index < count - kept; ++index)
        stepAt(index).noteIn(editedBefore_);
    before_ = stepAt(count - kept - 1).after();
    history_.clear();
    for (std::unique_ptr<Entry> &entry : entries)
        history_.push(entry.release());
}

std::optional<ByteRange> HandEdits::undo() {
    if (!history_.canUndo())
        return std::nullopt;
    const int index = history_.index() - 1;
    EditedBytes edited = editedBefore_;
    for (int before = 0; before < index; ++before)
        stepAt(before).noteIn(edited);
    history_.undo();
    edited_ = std::move(edited);
    hasForgotten_ = false;
    return stepAt(index).changed();
}

std::optional<ByteRange> HandEdits::redo() {
    if (!history_.canRedo())
        return std::nullopt;
    const Step &step = stepAt(history_.index());
    EditedBytes edited = edited_;
    step.noteIn(edited);
    history_.redo();
    edited_ = std::move(edited);
    hasForgotten_ = false;
    return step.changed();
}

const HandEdits::Entry &HandEdits::entryAt(int index) const {
    return *static_cast<const Entry *>(history_.command(index));
}

const HandEdits::Step &HandEdits::stepAt(int index) const {
    return *entryAt(index).step();
}

ImageState HandEdits::state() const {
    return history_.index() == 0 ? before_ : stepAt(history_.index() - 1).after();
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

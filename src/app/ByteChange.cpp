#include "app/ByteChange.h"

ByteChange::ByteChange(Replace replace, qsizetype offset, QByteArray before, QByteArray after)
    : replace_(std::move(replace)),
      offset_(offset),
      before_(std::move(before)),
      after_(std::move(after)) {}

void ByteChange::undo() {
    replace_(offset_, after_.size(), before_);
    made_ = false;
}

// The stack calls this for a command that is new, too.
void ByteChange::redo() {
    if (!made_)
        replace_(offset_, before_.size(), after_);
    made_ = true;
}

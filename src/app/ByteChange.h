#pragma once

#include <QByteArray>
#include <QUndoCommand>

#include <functional>

/// An edit of the data to burn that can be taken back and made again. It is made already when the
/// command is created.
class ByteChange final : public QUndoCommand {
public:
    /// Replaces \a length bytes from \a offset on by \a bytes, and shows that.
    using Replace =
        std::function<void(qsizetype offset, qsizetype length, const QByteArray &bytes)>;

    /// \a before stood at \a offset, where \a after stands now; the longer one tells by how much
    /// the image has grown.
    ByteChange(Replace replace, qsizetype offset, QByteArray before, QByteArray after);

    void undo() override;
    void redo() override;

private:
    Replace replace_;
    qsizetype offset_;
    QByteArray before_;
    QByteArray after_;
    bool made_ = true;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/FileDescriptor.h"
#include "base/Result.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <future>

class UnfinishedFile;

/// Saves one file over and over for somebody who must not wait long for the disk. The disk is asked
/// to take the bytes before they take the file's place, and the names in the folder behind that.
/// Where it needs longer, they take it at once, so that neither another program nor the end of this
/// one misses them, and the disk follows: until then a failure of power may cost the file, and
/// nothing else may.
class BoundedSaving final : public QObject {
    Q_OBJECT

public:
    explicit BoundedSaving(QObject *parent = nullptr);
    /// Waits for the disk once more, for half a second at most.
    ~BoundedSaving() override;

    /// Replaces the file at \a path by \a bytes, by the rules of saveWholeFile(). Waits for the
    /// disk until \a deadline, and not at all while it is still busy with what was saved before.
    Result<void> save(const QString &path, const QByteArray &bytes, QDeadlineTimer deadline);

    /// True while the disk has yet to answer for what was saved: refused() or confirmed() follows,
    /// unless something else is saved before.
    bool isBusy() const { return asked_.valid(); }
    /// True if the disk has refused what was saved last.
    bool isRefused() const { return isRefused_; }

signals:
    /// The disk has refused, for \a failure, what save() took for saved.
    void refused(const Failure &failure);
    /// The disk has what it was not waited for.
    void confirmed();

private:
    Result<void> saveNext(UnfinishedFile &file, FileDescriptor copy, FileDescriptor folder);
    Result<void> saveAtOnce(UnfinishedFile &file, FileDescriptor copy, FileDescriptor folder,
                            QDeadlineTimer deadline);
    Result<void> askAboutFile(FileDescriptor file);
    Result<void> askAboutFolder(FileDescriptor folder);
    Result<void> ask(std::packaged_task<Result<void>()> question);
    Result<void> answerUntil(QDeadlineTimer deadline);
    void placeIsTaken(UnfinishedFile &file);
    bool diskHasAnswered(QDeadlineTimer deadline) const;
    Result<void> answer();
    void lookAgain();

    std::future<Result<void>> asked_; ///< what the disk answers; not valid while it is not asked
    FileDescriptor next_;             ///< the file that it is to be asked about then
    FileDescriptor nextFolder_;       ///< the folder that it is to be asked about in the end
    bool isRefused_ = false;
    QTimer looking_; ///< for an answer that came too late
};

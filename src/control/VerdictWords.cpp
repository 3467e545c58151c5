// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/VerdictWords.h"

#include "base/ShownName.h"
#include "base/TimeWords.h"
#include "files/FileStamp.h"
#include "language/CommandLine.h"
#include "language/Sentences.h"

#include <QCoreApplication>

namespace {

using Severity = MessageLine::Severity;
using Verdict = RunOutcome::Verdict;

class VerdictWording {
    Q_DECLARE_TR_FUNCTIONS(VerdictWords)

public:
    explicit VerdictWording(const RunRecord &run) : run_(run) {}

    QString changedSince(const ShownNow &now) const {
        const bool otherImage = run_.imageRevision != 0 && run_.imageRevision != now.imageRevision;
        const bool otherDevice = run_.device != now.device;
        if (isOfAFile() && isFileKnown(now) && run_.fileMark != now.fileMark)
            return tr("the file that was handed over has changed since.");
        if (otherImage && otherDevice)
            return tr("the device and the data to burn have changed since.");
        if (otherImage)
            return tr("the data to burn have changed since.");
        if (otherDevice)
            return tr("another device has been chosen since.");
        return {};
    }

    /// What has to be said though nothing is known to have changed.
    QString remark(const ShownNow &now) const {
        return !isOfAFile() || isFileKnown(now)
                   ? QString()
                   : tr("It is not known whether the file that was handed over has changed since.");
    }

    /// What happened, and when: "Verified at 13:02".
    QString event() const {
        return eventPattern().arg(timeWords(run_.endedAt, QDate::currentDate()));
    }

private:
    /// True if a file was handed over that was not the image.
    bool isOfAFile() const {
        return !run_.fileMark.isEmpty() && run_.outcome.verdict != Verdict::NotStarted;
    }
    bool isFileKnown(const ShownNow &now) const {
        return run_.fileMark != FileStamp::unknownMark && now.fileMark != FileStamp::unknownMark;
    }

    QString eventPattern() const {
        switch (run_.outcome.verdict) {
        case Verdict::Succeeded:
            return success();
        case Verdict::Qualified:
            return qualified();
        case Verdict::Stopped:
            return stopped();
        case Verdict::Failed:
        case Verdict::NotStarted:
            break;
        }
        return failure();
    }

    QString success() const {
        switch (run_.operation) {
        case ReadOperation:
            return tr("Read at %1");
        case VerifyOperation:
            return tr("Verified at %1");
        case WriteOperation:
            return tr("Written and verified at %1");
        case LogicOperation:
            break;
        }
        return tr("Logic test passed at %1");
    }

    QString qualified() const {
        switch (run_.operation) {
        case ReadOperation:
            return tr("Read, with a warning, at %1");
        case VerifyOperation:
            return tr("Verified, with a warning, at %1");
        case WriteOperation:
            return tr("Written, with a warning, at %1");
        case LogicOperation:
            break;
        }
        return tr("Logic test passed, with a warning, at %1");
    }

    QString stopped() const {
        switch (run_.operation) {
        case ReadOperation:
            return tr("Read stopped at %1");
        case VerifyOperation:
            return tr("Verify stopped at %1");
        case WriteOperation:
            return tr("Write stopped at %1: the chip may be written in part");
        case LogicOperation:
            break;
        }
        return tr("Logic test stopped at %1");
    }

    QString failure() const {
        switch (run_.operation) {
        case ReadOperation:
            return tr("Read failed at %1");
        case VerifyOperation:
            return tr("Verify failed at %1");
        case WriteOperation:
            return tr("Write failed at %1");
        case LogicOperation:
            break;
        }
        return tr("Logic test failed at %1");
    }

    const RunRecord &run_;
};

} // namespace

Severity severityOf(const RunRecord &run) {
    switch (run.outcome.verdict) {
    case Verdict::Succeeded:
        return Severity::Success;
    case Verdict::Qualified:
    case Verdict::Stopped:
        return Severity::Warning;
    case Verdict::Failed:
    case Verdict::NotStarted:
        break;
    }
    return Severity::Problem;
}

QString headingOf(const RunRecord &run) {
    const QString event = VerdictWording(run).event();
    return run.device.isEmpty() ? event
                                : QStringLiteral("%1 \u2013 %2").arg(event, shownName(run.device));
}

VerdictWords wordsFor(const RunRecord &run, const ShownNow &now) {
    const VerdictWording wording(run);
    const QString changed = wording.changedSince(now);
    if (changed.isEmpty())
        return {severityOf(run), joinedSentences(run.outcome.words(), wording.remark(now)),
                run.outcome.offer};
    return {Severity::Information, QStringLiteral("%1; %2").arg(wording.event(), changed)};
}

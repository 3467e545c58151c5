// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/FailureWords.h"

#include "base/BoundedText.h"
#include "base/NumberWords.h"
#include "base/ShownName.h"
#include "language/CommandLine.h"
#include "language/CustomMark.h"
#include "language/ImageEncoding.h"
#include "language/RunEnd.h"
#include "language/RunRemarks.h"
#include "language/Sentences.h"
#include "language/ToolReport.h"
#include "language/UsbProgrammer.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>
#include <variant>

namespace {

using namespace runEnds;
using namespace toolErrors;

/// How much of the tool's own words a sentence repeats.
constexpr qsizetype longestQuote = 300;

QString shortened(const QString &words) {
    return boundedText(words, longestQuote);
}

QString withFullStop(const QString &sentence) {
    const bool complete = QStringLiteral(".?!").contains(sentence.back());
    return complete ? sentence : sentence + u'.';
}

/// The words for one run or search that failed, or for what went wrong before one was stopped.
class FailureWording {
    Q_DECLARE_TR_FUNCTIONS(RunOutcome)

    static QString wayOut(StartTrouble::Cause cause) {
        switch (cause) {
        case StartTrouble::Cause::ForeignLink:
            return tr("Remove the link, and see that nobody else may write to its folder.");
        case StartTrouble::Cause::UnknownLink:
            return tr("See that what this path leads to can be reached.");
        case StartTrouble::Cause::Shell:
            break;
        }
        return tr("Check the environment variable SHELL, which names the shell that starts it.");
    }

public:
    enum class Task { Operation, StoppedOperation, Search };

    FailureWording(const RunFacts &run, Task task) : facts_(run), task_(task) {}

    FailureWords failure() const;
    FailureWords operator()(const StartTrouble &trouble) const {
        return {tr("The programmer tool was not started: %1.").arg(trouble.failure.reason),
                wayOut(trouble.cause)};
    }
    FailureWords operator()(const ToolNotFound &) const {
        return {tr("The shell did not find the programmer tool \u201c%1\u201d.").arg(facts_.tool),
                tr("Enter its path in the field Programmer tool."), nextSteps::ChooseTool{}};
    }
    FailureWords operator()(const ToolNotExecuted &) const {
        return {
            tr("The shell could not execute the programmer tool \u201c%1\u201d.").arg(facts_.tool),
            tr("Enter the path of a program in the field Programmer tool."),
            nextSteps::ChooseTool{}};
    }
    FailureWords operator()(const ToolError &error) const { return std::visit(*this, error); }
    FailureWords operator()(const NoDatabase &) const;
    FailureWords operator()(const NoAdapter &) const {
        return failed(tr("the tool found no TSOP adapter"), putIntoAdapter());
    }
    FailureWords operator()(const Killed &killed) const {
        return failed(tr("the programmer tool was killed by signal %1 (%2)")
                          .arg(QString::number(killed.signal),
                               QString::fromLocal8Bit(::strsignal(killed.signal))),
                      tr("Try again."));
    }
    FailureWords operator()(const BadStatus &end) const;
    FailureWords operator()(const GoodStatus &) const;

    FailureWords operator()(const NoProgrammer &) const;
    FailureWords operator()(const ProgrammerBusy &) const {
        return {tr("The programmer is in use by another program."),
                tr("End that program, or wait for it, and try again.")};
    }
    FailureWords operator()(const ProgrammerUnplugged &) const;
    FailureWords operator()(const ConnectionProblem &problem) const {
        return failed(
            tr("the connection to the programmer broke (%1)").arg(shortened(problem.words)),
            tr("Plug the programmer in again and try once more."));
    }
    FailureWords operator()(const BootloaderMode &) const {
        return {tr("The programmer is in bootloader mode and can do nothing else."),
                tr("Plug it in again; if it stays so, renew its firmware.")};
    }
    FailureWords operator()(const Overcurrent &) const {
        return failed(tr("the chip draws too much current. Is it the right way round?"),
                      tr("Take the chip out before you try again."));
    }
    FailureWords operator()(const UnknownDevice &device) const;
    FailureWords operator()(const UnsupportedDevice &) const {
        return failed(tr("the tool cannot do this with the device \u201c%1\u201d")
                          .arg(shownName(facts_.device)),
                      tr("If it is a logic IC, press Logic test."));
    }
    FailureWords operator()(const WrongChipId &id) const {
        return failed(
            tr("the chip's ID does not match (expected %1, got %2)").arg(id.expected, id.found),
            tr("Check that the chip sits right and is the device chosen; with Ignore chip ID "
               "mismatch the tool goes on all the same."));
    }
    FailureWords operator()(const WrongSize &size) const;
    FailureWords operator()(const Difference &difference) const;
    FailureWords operator()(const LogicErrors &errors) const {
        return failed(errors.count == 1 ? tr("1 error") : tr("%1 errors").arg(errors.count),
                      tr("Check that the chip sits right, and test again."));
    }
    FailureWords operator()(const NoTestVectors &missing) const {
        return failed(tr("nothing was tested, because %1 is no logic IC: the tool has no test "
                         "vectors for it")
                          .arg(shownName(missing.device)),
                      chooseLogicIc());
    }
    FailureWords operator()(const LogicTestNotRun &) const {
        return failed(tr("the programmer could not run the first step of it"),
                      tr("Check that the chip sits right, plug the programmer in again and try "
                         "once more."));
    }
    FailureWords operator()(const NoData &) const;
    FailureWords operator()(const UnopenedFile &file) const;
    FailureWords operator()(const BadRecord &record) const;
    FailureWords operator()(const NoConfiguration &) const {
        return failed(tr("the device has no fuses or lock bits to work on"),
                      tr("Take \u201c-c\u201d out of the field Programmer tool."));
    }
    FailureWords operator()(const NoChipId &) const {
        return failed(tr("the device has no chip ID that could be read"),
                      tr("Take \u201c-D\u201d out of the field Programmer tool."));
    }
    FailureWords operator()(const WrongCommandLine &line) const {
        return failed(
            line.complaint.isEmpty()
                ? tr("the tool only told how it is used")
                : tr("the tool does not take its command line: %1").arg(shortened(line.complaint)),
            checkTool());
    }
    FailureWords operator()(const OtherTrouble &trouble) const {
        return failed(tr("the tool said: %1").arg(shortened(trouble.words)), lookFurther());
    }

private:
    FailureWords failed(const QString &reason, const QString &nextStep) const;
    QString lengthen(qint64 needed) const;
    FailureWords plugged(const UsbProgrammer &programmer) const;
    static QString checkTool() { return tr("Check the field Programmer tool."); }
    static QString chooseLogicIc() { return tr("Choose a logic IC that Search devices finds."); }
    QString lookFurther() const {
        return task_ == Task::Search ? checkToolAndSearchAgain()
                                     : tr("The console shows all that it said.");
    }

    const RunFacts &facts_;
    Task task_;
};

FailureWords FailureWording::failed(const QString &reason, const QString &nextStep) const {
    if (task_ == Task::Search)
        return {withFullStop(tr("The search failed: %1").arg(reason)), nextStep};
    if (task_ == Task::StoppedOperation)
        return {withFullStop(reason), nextStep};
    switch (facts_.operation) {
    case ReadOperation:
        return {withFullStop(tr("Read failed: %1").arg(reason)), nextStep};
    case VerifyOperation:
        return {withFullStop(tr("Verify failed: %1").arg(reason)), nextStep};
    case WriteOperation:
        return {withFullStop(tr("Write failed: %1").arg(reason)), nextStep};
    case LogicOperation:
        break;
    }
    return {withFullStop(tr("Logic test failed: %1").arg(reason)), nextStep};
}

FailureWords FailureWording::operator()(const NoProgrammer &) const {
    if (!facts_.programmers)
        return {tr("No programmer was found. Is it plugged in, and may you use its USB device?"),
                tr("Plug one in, or have a udev rule let you use its device.")};
    const QList<UsbProgrammer> &all = *facts_.programmers;
    if (all.isEmpty())
        return {tr("No programmer was found: none is plugged in."),
                tr("Plug one in and try again.")};
    const auto closed = std::find_if(all.begin(), all.end(), [](const UsbProgrammer &one) {
        return one.access != UsbProgrammer::Access::Granted;
    });
    return plugged(closed == all.end() ? all.first() : *closed);
}

FailureWords FailureWording::plugged(const UsbProgrammer &programmer) const {
    switch (programmer.access) {
    case UsbProgrammer::Access::Refused:
        return {
            tr("No programmer was found: one is plugged in (%1), but you may not use it.")
                .arg(programmer.name),
            tr("Put this line into /etc/udev/rules.d/60-minipro.rules, run \u201cudevadm control "
               "--reload\u201d as root and plug it in again: %1")
                .arg(udevRuleFor(programmer)),
            nextSteps::CopyUdevRule{udevRuleFor(programmer)}};
    case UsbProgrammer::Access::NoNode:
        return {tr("No programmer was found: one is plugged in (%1), but its device %2 is out of "
                   "reach.")
                    .arg(programmer.name, programmer.node),
                tr("In a sandbox, let this program use USB devices; elsewhere, plug it in again.")};
    case UsbProgrammer::Access::Granted:
        break;
    }
    return {tr("No programmer was found, although one is plugged in (%1) and you may use it.")
                .arg(programmer.name),
            tr("Plug it in again; if that does not help, it may need a newer tool.")};
}

FailureWords FailureWording::operator()(const ProgrammerUnplugged &) const {
    const bool halfWritten = task_ != Task::Search && facts_.operation == WriteOperation;
    return failed(tr("the programmer was unplugged"),
                  halfWritten ? tr("Plug it in and write again: the chip may be written in part.")
                              : tr("Plug it in and try again."));
}

FailureWords FailureWording::operator()(const NoDatabase &) const {
    QStringList places = facts_.report.missingDatabase;
    places.removeAll(QString());
    places.removeAll(QStringLiteral("."));
    return {places.isEmpty() ? tr("The programmer tool did not find its list of devices.")
                             : tr("The programmer tool did not find its list of devices in %1.")
                                   .arg(places.join(tr(", "))),
            tr("Install the tool with its files (make install), or set MINIPRO_HOME to the folder "
               "that holds logicic.xml and infoic.xml.")};
}

FailureWords FailureWording::operator()(const UnknownDevice &device) const {
    if (!facts_.report.missingDatabase.isEmpty())
        return (*this)(NoDatabase{});
    if (device.name.isEmpty())
        return {tr("Enter a device first."), {}};
    return {tr("The programmer tool does not know the device \u201c%1\u201d.")
                .arg(shownName(device.name)),
            device.name.endsWith(customMark)
                ? tr("Remove \u201c%1\u201d, which is no part of the name.").arg(customMark)
                : tr("Choose a name that Search devices finds.")};
}

FailureWords FailureWording::operator()(const WrongSize &size) const {
    const QString found = grouped(size.found);
    const QString needed = grouped(size.needed);
    const QString reason = facts_.imageIsShown
                               ? tr("the data have %1 bytes, the chip needs %2").arg(found, needed)
                               : tr("the file \u201c%3\u201d has %1 bytes, the chip needs %2")
                                     .arg(found, needed, facts_.imagePath);
    if (size.found >= size.needed)
        return failed(reason, tr("Choose a larger chip or shorter data, or turn on Ignore size "
                                 "mismatch to use only the first %1 bytes.")
                                  .arg(needed));
    FailureWords words = failed(reason, lengthen(size.needed));
    words.offer = padToReach(size.needed, facts_);
    return words;
}

QString FailureWording::lengthen(qint64 needed) const {
    const QString ignore = facts_.operation == WriteOperation
                               ? tr("or turn on Ignore size mismatch: the rest of the chip then "
                                    "does not come from these data.")
                               : tr("or turn on Ignore size mismatch: the rest of the chip is "
                                    "then not compared.");
    const std::optional<nextSteps::PadTo> padTo = padToReach(needed, facts_);
    return padTo ? tr("Turn on Pad with Pad to %1 KiB, %2")
                       .arg(QString::number(padTo->kibibytes), ignore)
                 : tr("Use a file of %1 bytes, %2").arg(grouped(needed), ignore);
}

FailureWords FailureWording::operator()(const Difference &difference) const {
    const auto in = [&difference](const QString &words) {
        return words.arg(difference.address, difference.inFile, difference.inChip);
    };
    const std::optional<WrongSize> &ignored = facts_.report.ignoredSize;
    const bool behindEnd = ignored && difference.address.toLongLong(nullptr, 0) >= ignored->found;
    QString reason;
    if (facts_.report.decoded != ImageEncoding::Raw)
        reason =
            in(tr("at address %1 the bytes decoded from the file have %2 and the chip has %3"));
    else if (behindEnd)
        reason = in(tr("at address %1, behind the end of the data, the chip has %3 and not the "
                       "blank %2"));
    else if (facts_.imageIsShown)
        reason = in(tr("at address %1 the data have %2 and the chip has %3"));
    else
        reason =
            tr("at address %1 the file \u201c%4\u201d has %2 and the chip has %3")
                .arg(difference.address, difference.inFile, difference.inChip, facts_.imagePath);
    FailureWords words =
        failed(reason, facts_.operation == WriteOperation
                           ? tr("Check that the chip sits right and that Skip erase is off, and "
                                "write again.")
                           : tr("Check that the chip and the device are the right ones, or "
                                "write the chip."));
    // A byte can be looked at only where the bytes are shown.
    if (facts_.imageIsShown && facts_.report.decoded == ImageEncoding::Raw && !behindEnd)
        words.offer = nextSteps::ShowDifference{difference.address.toLongLong(nullptr, 0)};
    return words;
}

FailureWords FailureWording::operator()(const NoData &) const {
    const QString nextStep = tr("Open a binary, or read a chip and use its data.");
    if (facts_.imageIsShown && facts_.imageLength == 0)
        return failed(tr("there are no data to burn"), nextStep);
    return failed(tr("the file \u201c%1\u201d is empty, or no file").arg(facts_.imagePath),
                  nextStep);
}

FailureWords FailureWording::operator()(const UnopenedFile &file) const {
    const QString nextStep =
        file.forWriting ? tr("See that its folder is there, may be written to and has room.")
                        : tr("See that it is there and may be read.");
    const QString path = shortened(file.path);
    if (file.reason.isEmpty())
        return failed(file.forWriting ? tr("the tool could not write to \u201c%1\u201d").arg(path)
                                      : tr("the tool could not open \u201c%1\u201d").arg(path),
                      nextStep);
    const QString reason = shortened(file.reason);
    return failed(file.forWriting
                      ? tr("the tool could not write to \u201c%1\u201d (%2)").arg(path, reason)
                      : tr("the tool could not open \u201c%1\u201d (%2)").arg(path, reason),
                  nextStep);
}

FailureWords FailureWording::operator()(const BadRecord &record) const {
    const QString nextStep = tr("Mend the text. A binary that begins like such text cannot be "
                                "burned as it is.");
    const QString kind = nameOf(encodingOf(facts_));
    const QString words = shortened(record.words);
    return failed(
        kind.isEmpty()
            ? tr("the tool decodes the file as text and finds a mistake in it (%1)").arg(words)
            : tr("the tool decodes the file as %1 text and finds a mistake in it (%2)")
                  .arg(kind, words),
        nextStep);
}

FailureWords FailureWording::failure() const {
    FailureWords words = std::visit(*this, endOf(facts_));
    const ToolReport &report = facts_.report;
    words.sentence = joinedSentences(words.sentence, remarkOnChipId(report));
    if (report.adapterMissing && report.error)
        words.sentence = joinedSentences(words.sentence, tr("The tool found no TSOP adapter."));
    return words;
}

FailureWords FailureWording::operator()(const BadStatus &end) const {
    const ToolReport &report = facts_.report;
    const QString status = QString::number(end.status);
    if (report.protectionGuessed) {
        FailureWords words = failed(tr("the tool names no cause; the chip may be write-protected"),
                                    tr("Turn on Remove write protection and write again."));
        words.offer = nextSteps::RemoveWriteProtection{};
        return words;
    }
    if (report.lastLine.isEmpty())
        return failed(tr("the programmer tool ended with status %1").arg(status),
                      report.stepBegun ? lookFurther() : checkTool());
    return failed(tr("the programmer tool ended with status %1 and said: %2")
                      .arg(status, shortened(report.lastLine)),
                  lookFurther());
}

FailureWords FailureWording::operator()(const GoodStatus &) const {
    if (facts_.report.logicPassed)
        return failed(
            tr("nothing was tested, because %1 is no logic IC. The tool's line \u201cLogic "
               "test successful.\u201d says nothing here: it had no vectors to test")
                .arg(shownName(facts_.device)),
            chooseLogicIc());
    return failed(tr("the programmer tool did not say that it succeeded"), lookFurther());
}

} // namespace

FailureWords wordsForFailedRun(const RunFacts &facts) {
    return FailureWording(facts, FailureWording::Task::Operation).failure();
}

FailureWords wordsForFailedSearch(const RunFacts &facts) {
    return FailureWording(facts, FailureWording::Task::Search).failure();
}

QString checkToolAndSearchAgain() {
    return QCoreApplication::translate("RunOutcome",
                                       "Check the field Programmer tool and search again.");
}

std::optional<FailureWords> wordsForCauseBeforeStop(const RunFacts &facts) {
    if (!facts.report.error)
        return std::nullopt;
    return std::visit(FailureWording(facts, FailureWording::Task::StoppedOperation),
                      *facts.report.error);
}

#include "tool/FailureWords.h"

#include <QCoreApplication>

#include <cstring>

namespace {

using namespace toolErrors;

// How a shell reports that it could not run a command, or that a signal killed it. The tool
// itself ends with 0 or 1 alone.
constexpr int shellCouldNotExecute = 126;
constexpr int shellDidNotFind = 127;
constexpr int shellSignalBase = 128;
constexpr int largestSignal = 64;

/// The sentences for one run that failed.
class FailureWording {
    Q_DECLARE_TR_FUNCTIONS(RunOutcome)

public:
    explicit FailureWording(const RunFacts &run) : facts_(run) {}

    QString failure() const;

    QString operator()(const NoProgrammer &) const {
        return tr("No programmer was found. Is it plugged in, and may you use its USB device?");
    }
    QString operator()(const ProgrammerBusy &) const {
        return tr("The programmer is in use by another program.");
    }
    QString operator()(const ProgrammerUnplugged &) const {
        return failed(tr("the programmer was unplugged"));
    }
    QString operator()(const ConnectionProblem &problem) const {
        return failed(tr("the connection to the programmer broke (%1)").arg(problem.words));
    }
    QString operator()(const Overcurrent &) const {
        return failed(tr("the chip draws too much current. Is it the right way round?"));
    }
    QString operator()(const UnknownDevice &device) const {
        return tr("The programmer tool does not know the device \"%1\".").arg(device.name);
    }
    QString operator()(const WrongChipId &id) const {
        return failed(
            tr("the chip's ID does not match (expected %1, got %2)").arg(id.expected, id.found));
    }
    QString operator()(const WrongSize &size) const {
        return failed(tr("the data have %1 bytes, the chip needs %2").arg(size.found, size.needed));
    }
    QString operator()(const Difference &difference) const {
        return failed(tr("at address %1 the data have %2 and the chip has %3")
                          .arg(difference.address, difference.inFile, difference.inChip));
    }
    QString operator()(const LogicErrors &errors) const {
        return errors.count == 1 ? failed(tr("1 error"))
                                 : failed(tr("%1 errors").arg(errors.count));
    }

private:
    QString failed(const QString &reason) const;
    QString failureByStatus() const;

    const RunFacts &facts_;
};

QString ended(const QString &sentence) {
    const bool complete = QStringLiteral(".?!").contains(sentence.back());
    return complete ? sentence : sentence + QLatin1Char('.');
}

QString FailureWording::failed(const QString &reason) const {
    switch (facts_.operation) {
    case ReadOperation:
        return ended(tr("Read failed: %1").arg(reason));
    case VerifyOperation:
        return ended(tr("Verify failed: %1").arg(reason));
    case WriteOperation:
        return ended(tr("Write failed: %1").arg(reason));
    case LogicOperation:
        break;
    }
    return ended(tr("Logic test failed: %1").arg(reason));
}

QString FailureWording::failure() const {
    if (!facts_.killedBySignal && facts_.status == shellDidNotFind)
        return tr("The shell did not find the programmer tool \"%1\".").arg(facts_.tool);
    if (!facts_.killedBySignal && facts_.status == shellCouldNotExecute)
        return tr("The shell could not execute the programmer tool \"%1\".").arg(facts_.tool);
    const std::optional<ToolError> &error = facts_.report.error;
    return error ? std::visit(*this, *error) : failureByStatus();
}

/// The number of the signal that ended the tool; 0 if none did. A shell that did not give its
/// place to the tool says so by its exit code.
int endingSignal(const RunFacts &facts) {
    if (facts.killedBySignal)
        return facts.status;
    const int signal = facts.status - shellSignalBase;
    return signal > 0 && signal <= largestSignal ? signal : 0;
}

QString FailureWording::failureByStatus() const {
    if (const int signal = endingSignal(facts_); signal != 0)
        return failed(
            tr("the programmer tool was killed by signal %1 (%2)")
                .arg(QString::number(signal), QString::fromLocal8Bit(::strsignal(signal))));
    const ToolReport &report = facts_.report;
    if (facts_.status != 0)
        return failed(report.lastLine.isEmpty()
                          ? tr("the programmer tool ended with status %1").arg(facts_.status)
                          : tr("the programmer tool ended with status %1 and said: %2")
                                .arg(QString::number(facts_.status), report.lastLine));
    if (report.logicPassed)
        return failed(tr("the device is no logic IC, nothing was tested"));
    return failed(tr("the programmer tool did not say that it succeeded"));
}

} // namespace

QString wordsForFailure(const RunFacts &facts) {
    return FailureWording(facts).failure();
}

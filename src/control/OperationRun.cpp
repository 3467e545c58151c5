// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/OperationRun.h"

#include "base/Log.h"
#include "base/NumberWords.h"
#include "base/TimeWords.h"
#include "files/FileLoading.h"
#include "files/FileStamp.h"
#include "files/LoggedLoading.h"
#include "language/LogicReport.h"
#include "language/NextStep.h"
#include "language/RunJudgement.h"
#include "tool/PluggedProgrammers.h"
#include "tool/ResultsFile.h"
#include "tool/ScriptedMiniPro.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

class OperationWording {
    Q_DECLARE_TR_FUNCTIONS(OperationRun)

public:
    static RunOutcome nothingRead(const ReadFile &file) {
        const Failure *failure = file.bytes.failure();
        const QString reason = failure ? failure->reason : tr("the file is empty");
        return {RunOutcome::Verdict::Failed,
                tr("The tool says that it has read the chip, but there are no bytes in %1: %2.")
                    .arg(QDir::toNativeSeparators(file.path), reason),
                tr("See whether the tool may write there, and read again."),
                nextSteps::ReadAgain{}};
    }

    static QString bytesRead(const QString &sentence, qint64 length) {
        return tr("%1 %2 bytes.").arg(sentence, grouped(length));
    }

    static QString stale(const QString &when) {
        return tr("The last Read failed; these bytes are from %1.").arg(when);
    }
};

RunRecord recordBefore(Operation operation, const ToolSettings &settings, const BurnSituation &burn,
                       quint64 imageRevision) {
    RunRecord record;
    record.operation = operation;
    record.device = settings.device;
    record.tool = settings.tool;
    record.commandLine = operationCommand(operation, settings);
    record.startedAt = QDateTime::currentDateTime();
    if (!takesImage(operation))
        return record;
    record.imageLength = burn.fileIsImage() ? burn.imageLength : QFileInfo(burn.path).size();
    if (burn.fileIsImage())
        record.imageRevision = imageRevision;
    else
        record.fileMark = FileStamp::mark(burn.path);
    return record;
}

/// Pins that fail behind a gap in the report are not among those that are named.
void tellOfCutReport(RunRecord &record, const ReportTrouble &trouble) {
    record.report = trouble.isOlder ? RunRecord::Report::Older : RunRecord::Report::Cut;
    record.outcome.add(wordsForCutReport(trouble.failure));
    if (record.outcome.verdict == RunOutcome::Verdict::Succeeded)
        record.outcome.verdict = RunOutcome::Verdict::Qualified;
}

} // namespace

void chooseOperation(ScriptedMiniPro &run, int tag, Log &log) {
    switch (tag) {
    case ReadOperation:
        log.write(QStringLiteral("ReadOperation"));
        return run.setReadOperation();
    case VerifyOperation:
        log.write(QStringLiteral("VerifyOperation"));
        return run.setVerifyOperation();
    case WriteOperation:
        log.write(QStringLiteral("WriteOperation"));
        return run.setWriteOperation();
    case LogicOperation:
        log.write(QStringLiteral("LogicOperation"));
        return run.setLogicOperation();
    default:
        return;
    }
}

RunRecord carryOut(ScriptedMiniPro &run, const ToolSettings &settings, const BurnSituation &burn,
                   quint64 imageRevision) {
    const Operation operation = run.facts().operation;
    RunRecord record = recordBefore(operation, settings, burn, imageRevision);
    record.status = run.launch();
    record.endedAt = QDateTime::currentDateTime();
    RunFacts facts = run.facts();
    facts.imageLength = record.imageLength;
    facts.imageIsShown = burn.fileIsImage();
    if (takesImage(operation) && burn.fileIsImage())
        facts.encoding = burn.encoding;
    facts.known = run.knownMemories();
    facts.programmers = pluggedProgrammers();
    record.outcome = judgeRun(facts);
    if (const ReportTrouble *trouble = run.reportWritten().failure())
        tellOfCutReport(record, *trouble);
    record.said = run.saidTail();
    run.releaseOutput();
    return record;
}

ReadFile loadReadFile(const QString &path, Log &log) {
    return {path, orLogged(loadOwnFile(path), log)};
}

bool judgeRead(RunRecord &record, const ReadFile &file) {
    record.imageLength = file.length();
    if (!record.outcome.endedWell())
        return false;
    if (file.length() == 0) {
        record.outcome = OperationWording::nothingRead(file);
        return false;
    }
    record.outcome.sentence = OperationWording::bytesRead(record.outcome.sentence, file.length());
    return true;
}

QString staleReadRemark(const RunRecord &record, const QString &path) {
    const QDateTime written = QFileInfo(path).lastModified();
    return OperationWording::stale(timeWords(written, record.startedAt.date()));
}

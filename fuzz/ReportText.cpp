// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "ReportText.h"

#include <variant>

namespace {

using namespace toolErrors;

QString numbers(qint64 one, qint64 other) {
    return QString::number(one) + u',' + QString::number(other);
}

/// What an error holds beside its kind; nothing for most.
struct Details {
    QString operator()(const ConnectionProblem &error) const { return error.words; }
    QString operator()(const UnknownDevice &error) const { return error.name; }
    QString operator()(const WrongChipId &error) const {
        return error.expected + u',' + error.found;
    }
    QString operator()(const WrongSize &error) const { return numbers(error.found, error.needed); }
    QString operator()(const Difference &error) const {
        return error.address + u',' + error.inFile + u',' + error.inChip;
    }
    QString operator()(const LogicErrors &error) const { return QString::number(error.count); }
    QString operator()(const NoTestVectors &error) const { return error.device; }
    QString operator()(const UnopenedFile &error) const {
        return error.path + u',' + error.reason + QString::number(error.forWriting);
    }
    QString operator()(const BadRecord &error) const { return error.words; }
    QString operator()(const WrongCommandLine &error) const { return error.complaint; }
    QString operator()(const OtherTrouble &error) const { return error.words; }
    template <typename Bare>
    QString operator()(const Bare &) const {
        return {};
    }
};

QString flagsOf(const ToolReport &report) {
    QString text;
    for (const bool flag :
         {report.protectionGuessed, report.adapterMissing, report.stepBegun, report.lastStepDone,
          report.verified, report.logicPassed, report.logicTested, report.choiceAsked})
        text += flag ? u'1' : u'0';
    return text;
}

} // namespace

QString textOf(const ToolReport &report) {
    QStringList parts = {flagsOf(report), report.lastLine, QString::number(int(report.decoded))};
    parts += report.missingDatabase + QStringList(QString()) + report.partsRead +
             QStringList(QString()) + report.partsWritten;
    if (report.error)
        parts += QString::number(report.error->index()) + std::visit(Details(), *report.error);
    if (report.ignoredId)
        parts += QStringLiteral("id ") + Details()(*report.ignoredId);
    if (report.ignoredSize)
        parts += QStringLiteral("size ") + Details()(*report.ignoredSize);
    return parts.join(u'\n');
}

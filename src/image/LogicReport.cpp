#include "image/LogicReport.h"

namespace {

bool isLineBreak(QChar character) {
    switch (character.unicode()) {
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
    case 0x0085: // next line
        return true;
    default:
        return false;
    }
}

bool isWhiteSpace(QChar character) {
    return character == u'\t' || character.category() == QChar::Separator_Space;
}

// Cuts text at every single separator, so that neighbouring ones leave empty parts behind.
template <typename Predicate>
QList<QStringView> cutAt(QStringView text, Predicate isSeparator) {
    QList<QStringView> parts;
    qsizetype begin = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (!isSeparator(text.at(at)))
            continue;
        parts.append(text.sliced(begin, at - begin));
        begin = at + 1;
    }
    parts.append(text.sliced(begin));
    return parts;
}

QStringList fieldsOf(QStringView line) {
    QStringList fields;
    for (const QStringView part : cutAt(line, isWhiteSpace))
        fields.append(part.toString());
    return trimEmptyStrings(fields);
}

void parseLine(QStringView line, LogicReport &report) {
    if (line.contains(u"Logic test")) {
        report.log.append(QStringLiteral("parser found Logic test row - setting peeping_at"));
        report.title = line.toString();
    } else if (line.startsWith(u"      ")) {
        report.headers = fieldsOf(line);
    } else if (line.startsWith(u'0')) {
        report.rows.append(fieldsOf(line));
    }
}

} // namespace

LogicReport parseLogicReport(QStringView text) {
    LogicReport report;
    for (const QStringView line : cutAt(text, isLineBreak))
        parseLine(line, report);
    return report;
}

QStringList trimEmptyStrings(const QStringList &strings) {
    QStringList kept;
    kept.reserve(strings.size());
    for (const QString &string : strings)
        if (!string.isEmpty())
            kept.append(string);
    return kept;
}

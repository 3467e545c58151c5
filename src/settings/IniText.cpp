// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/IniText.h"

#include "base/Utf8.h"
#include "files/TextLines.h"
#include "settings/IniValue.h"

#include <QByteArrayView>

#include <algorithm>

namespace {

constexpr char firstPrintableByte = 0x20;

bool isControlCharacter(char c) {
    const bool allowed = c == '\t' || c == '\n' || c == '\r';
    return c >= 0 && c < firstPrintableByte && !allowed;
}

bool isComment(QByteArrayView line) {
    return line.startsWith(';') || line.startsWith('#');
}

/// The lines of \a content, each with what ends it.
QList<QByteArrayView> linesOf(QByteArrayView content) {
    QList<QByteArrayView> lines;
    while (!content.isEmpty()) {
        // Not by its address: that is a call for each byte.
        const qsizetype end =
            std::find_if(content.begin(), content.end(), [](char c) { return endsLine(c); }) -
            content.begin();
        const qsizetype size = end + lineEndAt(content, end);
        lines.append(content.first(size));
        content = content.sliced(size);
    }
    return lines;
}

/// The section of a heading, empty for General; nothing if the line is none.
std::optional<QString> sectionOf(QByteArrayView line) {
    const qsizetype end = line.indexOf(']');
    if (end < 0)
        return std::nullopt;
    const QByteArrayView rest = line.sliced(end + 1).trimmed();
    if (!rest.isEmpty() && !isComment(rest))
        return std::nullopt;
    const QString name = QString::fromUtf8(line.first(end).sliced(1).trimmed());
    return name.compare(QStringLiteral("General"), Qt::CaseInsensitive) == 0 ? QString() : name;
}

struct Entry {
    QString name;
    QByteArrayView value; ///< as it stands in the text, without blanks around it
};

/// An entry ends before a comment; nothing if the line is none, or goes on in the next.
std::optional<Entry> entryOf(QByteArrayView line) {
    qsizetype equals = -1;
    qsizetype end = 0;
    bool isQuoted = false;
    for (; end < line.size() && (isQuoted || line.at(end) != ';'); ++end) {
        if (line.at(end) == '\\')
            ++end;
        else if (line.at(end) == '"')
            isQuoted = !isQuoted;
        else if (line.at(end) == '=' && !isQuoted && equals < 0)
            equals = end;
    }
    if (isQuoted || equals <= 0 || end > line.size())
        return std::nullopt;
    return Entry{QString::fromUtf8(line.first(equals).trimmed()),
                 line.first(end).sliced(equals + 1).trimmed()};
}

struct Line {
    QByteArrayView text; ///< with what ends it
    QString section;
    bool isHeading = false;
    std::optional<Entry> entry; ///< neither: blank, or a comment

    /// How the entry is known to others.
    QString key() const { return section.isEmpty() ? entry->name : section + u'/' + entry->name; }
};

/// What the line \a text of \a section is; nothing if it may not stand in INI text.
std::optional<Line> lineFrom(QByteArrayView text, const QString &section) {
    const QByteArrayView inner = text.trimmed();
    Line line{text, section, inner.startsWith('['), std::nullopt};
    if (inner.isEmpty() || isComment(inner))
        return line;
    if (line.isHeading) {
        const std::optional<QString> heading = sectionOf(inner);
        line.section = heading.value_or(QString());
        return heading ? std::optional(line) : std::nullopt;
    }
    line.entry = entryOf(inner);
    return line.entry ? std::optional(line) : std::nullopt;
}

/// The lines, which refer to \a content; nothing if it is damaged.
std::optional<QList<Line>> parsed(QByteArrayView content) {
    if (!content.isValidUtf8() || std::any_of(content.begin(), content.end(), isControlCharacter))
        return std::nullopt;
    if (content.startsWith(utf8::byteOrderMark))
        content = content.sliced(utf8::byteOrderMark.size());
    QList<Line> lines;
    QString section;
    for (const QByteArrayView text : linesOf(content)) {
        const std::optional<Line> line = lineFrom(text, section);
        if (!line)
            return std::nullopt;
        section = line->section;
        lines.append(*line);
    }
    return lines;
}

/// The last entry of \a key; null if there is none.
const Entry *entryIn(const QList<Line> &lines, const QString &key) {
    const auto line = std::find_if(lines.rbegin(), lines.rend(), [&](const Line &candidate) {
        return candidate.entry && candidate.key() == key;
    });
    return line == lines.rend() ? nullptr : &*line->entry;
}

/// After which line a new entry goes: after those that sort before it, else at the beginning of
/// its section, and never between a comment and what it may speak of. Null without the section.
const Line *lineBefore(const QList<Line> &lines, const QString &section, const QString &name) {
    const Line *before = nullptr;
    for (const Line &line : lines) {
        const bool sortsBefore = line.entry && line.entry->name < name;
        const bool begins = !before && (line.entry || line.isHeading);
        if (line.section == section && (sortsBefore || begins))
            before = &line;
    }
    return before;
}

bool endsWithALine(QByteArrayView text) {
    return text.isEmpty() || endsLine(text.back());
}

QByteArray withNewEntry(const QByteArray &content, const QList<Line> &lines, const QString &key,
                        const QByteArray &spelling) {
    const QString section = key.section(u'/', 0, -2);
    const QString name = key.section(u'/', -1);
    const QByteArray lineEnd = content.contains("\r\n") ? "\r\n" : "\n";
    const QByteArray entry = name.toUtf8() + '=' + spelling + lineEnd;
    if (const Line *before = lineBefore(lines, section, name)) {
        const qsizetype position = before->text.end() - content.constData();
        return QByteArray(content).insert(position,
                                          endsWithALine(before->text) ? entry : lineEnd + entry);
    }
    QByteArray heading = section.isEmpty() ? "[General]" : '[' + section.toUtf8() + ']';
    if (!content.isEmpty())
        heading.prepend(endsWithALine(content) ? lineEnd : lineEnd + lineEnd);
    return content + heading + lineEnd + entry;
}

QByteArray withValue(const QByteArray &content, const QString &key, const QByteArray &spelling) {
    const QList<Line> lines = parsed(content).value_or(QList<Line>());
    const Entry *older = entryIn(lines, key);
    if (!older)
        return withNewEntry(content, lines, key, spelling);
    const qsizetype position = older->value.data() - content.constData();
    return QByteArray(content).replace(position, older->value.size(), spelling);
}

/// A list whose last entry is empty is spelled with a blank at its end, which readers leave out:
/// each further change would leave one more in the line.
QByteArray spelled(const QVariant &value) {
    return iniValue::encoded(value).trimmed();
}

} // namespace

namespace iniText {

std::optional<QVariantMap> values(const QByteArray &content) {
    const std::optional<QList<Line>> lines = parsed(content);
    if (!lines)
        return std::nullopt;
    QVariantMap found;
    for (const Line &line : *lines)
        if (line.entry)
            found.insert(line.key(), iniValue::decoded(line.entry->value));
    return found;
}

QByteArray changed(const QByteArray &content, const QVariantMap &changes) {
    QByteArray text = content;
    for (auto change = changes.begin(); change != changes.end(); ++change)
        text = withValue(text, change.key(), spelled(change.value()));
    return text;
}

} // namespace iniText

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/DeviceDescription.h"

#include "language/ToolReport.h"
#include "language/ToolSentences.h"

#include <QMap>
#include <QStringList>

#include <algorithm>

namespace {

/// More than any chip has; what is beyond is no size.
constexpr qint64 largestCount = qint64(1) << 40;

std::optional<MemorySection> readSection(const QString &words) {
    using Unit = MemorySection::Unit;
    static const QMap<QString, Unit> units = {{QStringLiteral("Bytes"), Unit::Bytes},
                                              {QStringLiteral("Words"), Unit::Words},
                                              {QStringLiteral("Bits"), Unit::Bits}};
    const QStringList pair = words.split(u' ', Qt::SkipEmptyParts);
    bool isNumber = false;
    const qint64 count = pair.value(0).toLongLong(&isNumber);
    const auto unit = units.find(pair.value(1));
    if (!isNumber || count <= 0 || count > largestCount || pair.size() != 2 || unit == units.end())
        return std::nullopt;
    return MemorySection{count, *unit};
}

/// "8192 Bytes + 512 Bytes"; none at all if a part of it is not understood.
QList<MemorySection> readSections(const QString &words) {
    QList<MemorySection> sections;
    for (const QString &part : words.split(u'+')) {
        const std::optional<MemorySection> section = readSection(part);
        if (!section)
            return {};
        sections.append(*section);
    }
    return sections;
}

/// The first value of each label ("Name: AT28C256").
QMap<QString, QString> labelledValues(const QStringList &lines) {
    QMap<QString, QString> values;
    for (const QString &line : lines)
        if (const QString label = line.section(u':', 0, 0).trimmed(); !values.contains(label))
            values.insert(label, line.section(u':', 1).trimmed());
    return values;
}

DeviceDescription describe(const QMap<QString, QString> &values) {
    DeviceDescription description;
    description.name = values.value(QStringLiteral("Name"));
    description.package = values.value(QStringLiteral("Package"));
    description.programmers = values.value(QStringLiteral("Available on"));
    bool isNumber = false;
    const int vectors = values.value(QStringLiteral("Vector count")).toInt(&isNumber);
    if (isNumber)
        description.vectors = vectors;
    else
        description.sections = readSections(values.value(QStringLiteral("Memory")));
    return description;
}

bool saysUnknown(const QString &line) {
    const std::optional<ToolError> error = toolErrorIn(line);
    return error && std::holds_alternative<toolErrors::UnknownDevice>(*error);
}

bool saysListIsMissing(const QString &line) {
    return databasePlaceIn(line).has_value();
}

} // namespace

std::optional<qint64> MemorySection::bytes() const {
    switch (unit) {
    case Unit::Bytes:
        return count;
    case Unit::Words:
        return 2 * count;
    case Unit::Bits:
        break;
    }
    return std::nullopt;
}

std::optional<qint64> DeviceDescription::imageLength() const {
    return sections.isEmpty() ? std::nullopt : sections.constFirst().bytes();
}

DeviceAnswer readDeviceAnswer(const QString &text, int status) {
    QStringList lines = text.split(u'\n');
    for (QString &line : lines)
        line = line.trimmed();
    const QMap<QString, QString> values = labelledValues(lines);
    if (status == 0 && !values.value(QStringLiteral("Name")).isEmpty())
        return describe(values);
    if (status == 1 && std::any_of(lines.begin(), lines.end(), saysUnknown) &&
        std::none_of(lines.begin(), lines.end(), saysListIsMissing))
        return NoSuchDevice{};
    return {};
}

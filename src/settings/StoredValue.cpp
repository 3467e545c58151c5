// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/StoredValue.h"

#include <algorithm>
#include <initializer_list>

namespace {

bool allEmpty(const QStringList &entries) {
    return std::all_of(entries.begin(), entries.end(),
                       [](const QString &entry) { return entry.isEmpty(); });
}

bool isList(const QVariant &value) {
    return value.typeId() == QMetaType::QStringList || value.typeId() == QMetaType::QVariantList;
}

bool isOneOf(const QString &word, std::initializer_list<QStringView> words) {
    return std::any_of(words.begin(), words.end(), [&](QStringView candidate) {
        return word.compare(candidate, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

namespace storedValue {

// INI text cannot tell an empty list from a list of one empty text. The first, being the common
// one, is the empty text; lists of nothing but empty texts get one more comma than usual.
QVariant encoded(const QVariant &value) {
    if (!isList(value))
        return value.toString();
    QStringList entries = value.toStringList();
    if (entries.isEmpty())
        return QStringLiteral("");
    if (allEmpty(entries))
        entries.append(QString());
    return entries;
}

std::optional<QString> text(const QVariant &stored) {
    if (isList(stored))
        return list(stored).join(u", ");
    if (!stored.isValid() || !stored.canConvert<QString>())
        return std::nullopt;
    // A stored empty text is a value and differs from no value, which reads as a null string.
    const QString value = stored.toString();
    return value.isNull() ? QStringLiteral("") : value;
}

std::optional<bool> boolean(const QVariant &stored) {
    const QString word = text(stored).value_or(QString()).trimmed();
    if (isOneOf(word, {u"true", u"yes", u"on", u"1"}))
        return true;
    if (isOneOf(word, {u"false", u"no", u"off", u"0"}))
        return false;
    return std::nullopt;
}

QStringList list(const QVariant &stored) {
    if (isList(stored)) {
        QStringList entries = stored.toStringList();
        if (!entries.isEmpty() && allEmpty(entries))
            entries.removeLast();
        return entries;
    }
    const QString single = text(stored).value_or(QString());
    return single.isEmpty() ? QStringList() : QStringList(single);
}

} // namespace storedValue

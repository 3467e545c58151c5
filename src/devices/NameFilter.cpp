// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "devices/NameFilter.h"

#include <algorithm>
#include <iterator>

NameFilter::NameFilter(const QString &typed) {
    for (const QString &word : typed.simplified().split(u' ', Qt::SkipEmptyParts))
        words_.append(QStringMatcher(word, Qt::CaseInsensitive));
}

bool NameFilter::passes(const QString &name) const {
    return std::all_of(words_.begin(), words_.end(),
                       [&name](const QStringMatcher &word) { return word.indexIn(name) >= 0; });
}

QStringList NameFilter::passing(const QStringList &names) const {
    QStringList found;
    std::copy_if(names.begin(), names.end(), std::back_inserter(found),
                 [this](const QString &name) { return passes(name); });
    return found;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringMatcher>

/// Finds names by words: a name passes if it holds each of them somewhere, in any order and any
/// case. Without words every name passes.
class NameFilter {
public:
    /// The words of \a typed are what stands between its blanks.
    explicit NameFilter(const QString &typed = {});

    bool isEmpty() const { return words_.isEmpty(); }
    bool passes(const QString &name) const;
    /// Those of \a names that pass, in their order.
    QStringList passing(const QStringList &names) const;

private:
    QList<QStringMatcher> words_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

/// What a chip is known to hold besides the code memory, which alone a Write writes and a Verify
/// compares.
struct KnownMemories {
    bool data = false;
    bool user = false;
    bool fuses = false;
    bool others = false; ///< further ones, of which only their number is known

    bool any() const { return data || user || fuses || others; }

    /// What is known of one chip from two sources.
    KnownMemories operator|(const KnownMemories &more) const {
        return {data || more.data, user || more.user, fuses || more.fuses, others || more.others};
    }
    /// Without those of the parts that the tool named in \a parts, as it calls them.
    KnownMemories without(const QStringList &parts) const;

    friend bool operator==(const KnownMemories &, const KnownMemories &) = default;
};

/// True if \a tool, the text that names the programmer tool, chooses a memory besides the code.
bool choosesMemory(const QString &tool);

// Sentences about a chip with such memories, translated; empty for one without.

/// What of it a Write has not written.
QString notWrittenWords(const KnownMemories &memories);
/// What a Verify has not compared of it.
QString notComparedWords(const KnownMemories &memories);
/// What both leave out, before they are run.
QString codeAloneWords(const KnownMemories &memories);

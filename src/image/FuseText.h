// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>

/// A value that configures a chip.
struct Fuse {
    QString name;
    quint32 value = 0;
    int digits = 2; ///< hexadecimal digits that it was written with, 1 to 8

    friend bool operator==(const Fuse &, const Fuse &) = default;
};

/// One line of the text in which the programmer tool keeps the fuses of a chip.
struct FuseLine {
    QString text; ///< as it stands, without its end and the blanks around it
    /// What it says; nothing for a line that says something else.
    std::optional<Fuse> fuse;

    friend bool operator==(const FuseLine &, const FuseLine &) = default;
};

/// The lines of \a text but for the blank ones, in their order. Each dialect of the tool is
/// understood: "name = 0x62" and "name=0x62". Lines end in LF, CR LF or CR; what is no UTF-8 is
/// read as U+FFFD.
QList<FuseLine> readFuseText(QByteArrayView text);

/// How many of \a lines say a fuse.
qsizetype countFuses(const QList<FuseLine> &lines);

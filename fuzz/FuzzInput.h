// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What every target defines: tries one input, and does not return if something does not hold.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// Ends the program with \a sentence, which says what should have been so, unless it \a holds.
inline void mustHold(bool holds, const char *sentence) {
    if (holds)
        return;
    std::fprintf(stderr, "This does not hold: %s\n", sentence);
    std::abort();
}

/// Takes values off the front of an input, in order. One that is used up gives zeros and empty
/// texts.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t *data, std::size_t size)
        : rest_(reinterpret_cast<const char *>(data), qsizetype(size)) {}

    bool isUsedUp() const { return rest_.isEmpty(); }

    /// From 0 to \a most, which is 255 at the most; takes one byte.
    int number(int most) {
        const auto byte = std::uint8_t(rest_.isEmpty() ? '\0' : rest_.front());
        bytes(1);
        return byte % (most + 1);
    }
    bool truth() { return number(1) == 1; }

    /// The next \a most bytes, or as many as there are.
    QByteArray bytes(qsizetype most) {
        const QByteArrayView taken = rest_.first(std::min(most, rest_.size()));
        rest_ = rest_.sliced(taken.size());
        return taken.toByteArray();
    }
    QByteArray rest() { return bytes(rest_.size()); }

    /// The bytes up to the next line feed, which is taken too.
    QByteArray line() {
        const qsizetype end = rest_.indexOf('\n');
        const QByteArray taken = bytes(end < 0 ? rest_.size() : end);
        bytes(1);
        return taken;
    }

private:
    QByteArrayView rest_;
};

/// \a bytes as UTF-16 text, two bytes a unit, so that every text can be had, halves of surrogate
/// pairs included.
inline QString anyText(const QByteArray &bytes) {
    QString text;
    for (qsizetype at = 0; at + 1 < bytes.size(); at += 2)
        text += QChar(std::uint8_t(bytes[at]), std::uint8_t(bytes[at + 1]));
    return text;
}

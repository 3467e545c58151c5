// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/ConsoleChunk.h"

#include "base/Units.h"

#include <QStringView>

#include <algorithm>

namespace {

bool isLatin1(const QString &text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar unit) { return unit.unicode() <= maxByte; });
}

} // namespace

qsizetype ConsoleChunk::size() const {
    return std::visit([](const auto &text) { return text.size(); }, text_);
}

void ConsoleChunk::append(const QString &text) {
    std::get<QString>(text_).append(text);
}

void ConsoleChunk::pack() {
    if (const QString *text = std::get_if<QString>(&text_); text && isLatin1(*text))
        text_ = text->toLatin1();
}

void ConsoleChunk::copyTo(QString &text, qsizetype from, qsizetype count) const {
    if (const QByteArray *packed = std::get_if<QByteArray>(&text_))
        text += QLatin1String(*packed).sliced(from, count);
    else
        text += QStringView(std::get<QString>(text_)).sliced(from, count);
}

void ConsoleChunk::removeFirst(qsizetype count) {
    std::visit([count](auto &text) { text.remove(0, count); }, text_);
}

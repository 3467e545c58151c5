// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "settings/IniText.h"

#include <QStringList>

#include <cstddef>
#include <cstdint>

// A settings file may hold any bytes. It is read or called damaged; what is read stays readable
// after a change, and the change touches nothing else.

namespace {

QVariant valueFrom(FuzzInput &input) {
    const QString first = QString::fromUtf8(input.line());
    return input.truth() ? QVariant(QStringList{first, QString::fromUtf8(input.line())})
                         : QVariant(first);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static const QStringList keys = {QStringLiteral("binary"), QStringLiteral("device"),
                                     QStringLiteral("window/place")};
    FuzzInput input(data, size);
    const QString key = keys[input.number(2)];
    const QVariant value = valueFrom(input);
    const QByteArray content = input.rest();
    const auto before = iniText::values(content);
    if (!before)
        return 0;
    QVariantMap expected = *before;
    expected.insert(key, value);
    const QByteArray changed = iniText::changed(content, {{key, value}});
    const auto after = iniText::values(changed);
    mustHold(after.has_value(), "our own writing damages nothing");
    mustHold(*after == expected, "the change is there, and everything else as it was");
    mustHold(iniText::changed(changed, {{key, value}}) == changed,
             "the same change changes nothing");
    mustHold(iniText::changed(content, {}) == content, "no change changes nothing");
    return 0;
}

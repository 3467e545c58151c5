// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "settings/IniText.h"
#include "settings/SettingsKeys.h"
#include "settings/StoredValue.h"

#include <QStringList>

#include <cstddef>
#include <cstdint>

// Any text, list or truth in any key comes back as it was, from a file that was never anything
// but ours.

namespace {

const QStringList &keys() {
    static const QStringList all =
        settingsKeys::startupDefaults().keys() +
        QStringList{settingsKeys::binary, settingsKeys::device, settingsKeys::favourites};
    return all;
}

QVariant valueFrom(FuzzInput &input) {
    switch (input.number(3)) {
    case 0:
        return input.truth();
    case 1: {
        QStringList list;
        for (int entries = input.number(4); entries > 0; --entries)
            list.append(anyText(input.bytes(input.number(24))));
        return list;
    }
    case 2:
        return QString::fromUtf8(input.line());
    default:
        return anyText(input.bytes(input.number(255)));
    }
}

bool comesBack(const QVariant &value, const QVariant &stored) {
    if (value.typeId() == QMetaType::Bool)
        return storedValue::boolean(stored) == value.toBool();
    if (value.typeId() == QMetaType::QStringList)
        return storedValue::list(stored) == value.toStringList();
    return storedValue::text(stored) == value.toString();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    QByteArray content;
    QVariantMap kept;
    while (!input.isUsedUp()) {
        const QString key = keys()[input.number(int(keys().size()) - 1)];
        const QVariant value = valueFrom(input);
        kept.insert(key, value);
        content = iniText::changed(content, {{key, storedValue::encoded(value)}});
    }
    const auto found = iniText::values(content);
    mustHold(found.has_value(), "our own file is not damaged");
    mustHold(found->keys() == kept.keys(), "just the keys are there that were stored");
    for (auto entry = kept.begin(); entry != kept.end(); ++entry)
        mustHold(comesBack(entry.value(), found->value(entry.key())),
                 "a value comes back as it was");
    return 0;
}

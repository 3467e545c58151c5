// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/CompositionRemarks.h"

#include "base/Digits.h"
#include "base/NumberWords.h"
#include "base/Units.h"
#include "files/ByteBuffer.h"
#include "image/NumberScanning.h"

#include <QCoreApplication>

#include <optional>

namespace {

QString tr(const char *text) {
    return QCoreApplication::translate("CompositionRemarks", text);
}

QString refusalRemark(const CompositionInputs &inputs, const RefusedComposition &refused) {
    switch (refused.reason) {
    case RefusedComposition::Reason::NegativePad:
        return tr("There are no data to burn: Pad to is %1, and a size cannot be negative.")
            .arg(inputs.pad_to.trimmed());
    case RefusedComposition::Reason::TooLarge:
        return tr("There are no data to burn: they would be %1 bytes, and the largest image is %2.")
            .arg(grouped(refused.askedSize), boundWords(largestImage));
    case RefusedComposition::Reason::NoMemory:
        break;
    }
    return tr("There are no data to burn: there is no memory for their %1 bytes.")
        .arg(grouped(refused.askedSize));
}

QString readDataRemark(const CompositionInputs &inputs) {
    if (!inputs.combineReadData || lengthOf(inputs.read_from_chip_data) > 0)
        return {};
    if (lengthOf(inputs.opened_bin_data) > 0)
        return tr("Nothing was read: the image comes from the opened file.");
    return tr("Nothing was read, and no file is opened.");
}

QString startAddressRemark(const CompositionInputs &inputs) {
    const QString &text = inputs.rom_start_address;
    QStringView ignored;
    const std::optional<quint32> address = scanHexInt(text, &ignored);
    if (!address)
        return tr("The start address holds no hexadecimal number: 0 is used.");
    if (!ignored.trimmed().isEmpty())
        return tr("Only the beginning of the start address \u201c%1\u201d is a hexadecimal number: "
                  "%2 is used.")
            .arg(text.trimmed(), hexDigits(*address));
    return {};
}

QString padSizeRemark(const CompositionInputs &inputs) {
    QStringView ignored;
    const std::optional<qint32> size = scanInt(inputs.pad_to, &ignored);
    if (!size)
        return tr("Pad to holds no number: nothing is padded.");
    if (*size > 0 && inputs.padSize() != *size * kibibyte)
        return tr("Pad to is too large for its field: it counts as %1 bytes.")
            .arg(grouped(inputs.padSize()));
    if (!ignored.trimmed().isEmpty())
        return tr("Only the beginning of \u201c%1\u201d is a number: the data are padded to %2 "
                  "KiB.")
            .arg(inputs.pad_to.trimmed(), QString::number(*size));
    return {};
}

} // namespace

QStringList controlsThatDiffer(const ImageControls &one, const ImageControls &other) {
    QStringList names;
    const auto add = [&](bool differs, const QString &name) {
        if (differs)
            names.append(name);
    };
    add(one.binary != other.binary, tr("Opened binary"));
    add(one.rom_start_address != other.rom_start_address, tr("Start address"));
    add(one.combineReadData != other.combineReadData, tr("Use data read from chip"));
    add(one.pad != other.pad, tr("Pad"));
    add(one.pad_to != other.pad_to, tr("Pad to"));
    add(one.padWithZero != other.padWithZero, tr("the pad byte"));
    return names;
}

QStringList compositionRemarks(const CompositionInputs &inputs, const Composition &composition) {
    QStringList remarks;
    const auto add = [&](const QString &remark) {
        if (!remark.isEmpty())
            remarks.append(remark);
    };
    if (const RefusedComposition *refused = composition.image.failure())
        add(refusalRemark(inputs, *refused));
    add(readDataRemark(inputs));
    if (composition.source == CompositionSource::OpenedBinary)
        add(startAddressRemark(inputs));
    if (inputs.pad)
        add(padSizeRemark(inputs));
    return remarks;
}

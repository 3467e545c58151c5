// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "image/ImageComposition.h"
#include "image/NumberScanning.h"

#include <cstddef>
#include <cstdint>
#include <memory>

// An image is what a plain loop over its bytes makes, or is refused with a reason.

namespace {

/// Larger images only take time here.
constexpr qint64 largestTried = qint64(1) << 16;

CompositionInputs inputsFrom(FuzzInput &input) {
    CompositionInputs inputs;
    inputs.pad = input.truth();
    inputs.combineReadData = input.truth();
    inputs.padWithZero = input.truth();
    inputs.rom_start_address = QString::fromUtf8(input.line());
    inputs.pad_to = QString::fromUtf8(input.line());
    if (input.truth())
        inputs.read_from_chip_data = std::make_shared<QByteArray>(input.bytes(input.number(64)));
    if (input.truth())
        inputs.opened_bin_data = std::make_shared<QByteArray>(input.rest());
    return inputs;
}

/// What is to be made, before anything is refused.
struct Expected {
    QByteArrayView content;
    qint64 start = 0;
    qint64 size = 0;
    bool isRead = false;
};

Expected expectedOf(const CompositionInputs &inputs) {
    Expected expected;
    expected.isRead = inputs.combineReadData && lengthOf(inputs.read_from_chip_data) > 0;
    const ByteBuffer &content =
        expected.isRead ? inputs.read_from_chip_data : inputs.opened_bin_data;
    if (content)
        expected.content = *content;
    expected.start = expected.isRead ? 0 : scanHexInt(inputs.rom_start_address).value_or(0);
    expected.size = expected.start + expected.content.size();
    const qint64 kibibytes = scanInt(inputs.pad_to).value_or(0);
    const qint64 padded = kibibytes < 0 ? kibibytes : qint32(quint32(kibibytes) << 10);
    if (inputs.pad && (padded < 0 || padded > expected.size))
        expected.size = padded;
    return expected;
}

void checkImage(const CompositionInputs &inputs, const Expected &expected,
                const QByteArray &image) {
    mustHold(image.size() == expected.size, "the image has the size that was asked for");
    for (qsizetype at = 0; at < image.size(); ++at) {
        const qsizetype inContent = at - expected.start;
        const bool isContent = inContent >= 0 && inContent < expected.content.size();
        const char byte =
            isContent ? expected.content[inContent] : char(inputs.padWithZero ? 0x00 : 0xff);
        mustHold(image[at] == byte, "each byte is the content's or padding");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const CompositionInputs inputs = inputsFrom(input);
    const Expected expected = expectedOf(inputs);
    if (expected.size > largestTried && expected.size <= largestImage)
        return 0;
    const Composition made = composeImage(inputs);
    const bool isRefused = expected.size < 0 || expected.size > largestImage;
    const RefusedComposition *refused = made.image.failure();
    mustHold((refused != nullptr) == isRefused, "just what is too large is refused");
    mustHold(!refused || refused->askedSize == expected.size,
             "a refusal tells the size that was asked for");
    mustHold((made.source == CompositionSource::ReadData) == expected.isRead, "the source is told");
    if (made.image)
        checkImage(inputs, expected, **made.image);
    return 0;
}

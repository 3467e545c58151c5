// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "image/ImageComposition.h"

#include "base/HugePages.h"
#include "base/Units.h"
#include "image/NumberScanning.h"

#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace {

using Reason = RefusedComposition::Reason;

/// One composition from its inputs to its image, step by step.
class Composer {
public:
    explicit Composer(const CompositionInputs &inputs)
        : inputs_(inputs), padSize_(inputs.padSize()), padByte_(inputs.padByte()) {}

    Composition compose() {
        report("have read pad_to and converted to %1", padSize_);
        const bool isRead = inputs_.combineReadData && lengthOf(inputs_.read_from_chip_data) > 0;
        ComposedImage image = isRead ? fromReadData() : fromOpenedBinary();
        return {std::move(image),
                isRead ? CompositionSource::ReadData : CompositionSource::OpenedBinary,
                std::move(log_)};
    }

private:
    ComposedImage fromReadData() {
        const auto length = stretched(lengthOf(inputs_.read_from_chip_data));
        if (const RefusedComposition *refused = length.failure())
            return *refused;
        report("starting with read_from_chip_data which is %1 bytes", *length);
        if (inputs_.pad)
            reportFill(*length);
        return make(*length, inputs_.read_from_chip_data, 0);
    }

    ComposedImage fromOpenedBinary() {
        const qint64 start = inputs_.startAddress();
        report("start_address is %1", start);
        const qint64 binaryLength = lengthOf(inputs_.opened_bin_data);
        const auto length = stretched(start + binaryLength);
        if (const RefusedComposition *refused = length.failure())
            return *refused;
        reportFill(*length);
        ComposedImage image = make(*length, inputs_.opened_bin_data, start);
        if (image)
            report("inserting opened binary:%1 at %2", binaryLength, start);
        return image;
    }

    /// A negative pad size counts as larger than any length, as unsigned numbers compare.
    bool asksForPadding(qint64 length) const {
        return inputs_.pad && quint64(length) < quint64(padSize_);
    }

    /// The length with padding, if an image may be that large.
    Result<qint64, RefusedComposition> stretched(qint64 length) {
        const bool padded = asksForPadding(length);
        const qint64 asked = padded ? padSize_ : length;
        if (asked < 0)
            return refuse(Reason::NegativePad, asked, "refusing to pad to %1 bytes");
        if (asked > largestImage)
            return refuse(Reason::TooLarge, asked, "refusing to compose an image of %1 bytes");
        if (padded)
            report("padding to %1 bytes", asked);
        return asked;
    }

    /// Makes the image: \a content from offset \a start on, pad bytes everywhere else.
    ComposedImage make(qint64 length, const ByteBuffer &content, qint64 start) {
        // Where nothing is added the bytes are shared until an edit needs them for itself.
        if (start == 0 && length == lengthOf(content) && length > 0)
            return std::make_shared<QByteArray>(*content);
        ByteBuffer image;
        try {
            image = std::make_shared<QByteArray>(uninitializedBytes(length));
        } catch (const std::bad_alloc &) {
            return refuse(Reason::NoMemory, length, "no memory for an image of %1 bytes");
        }
        const qint64 end = start + lengthOf(content);
        char *bytes = image->data();
        fill(bytes, start);
        if (lengthOf(content) > 0)
            std::memcpy(bytes + start, content->constData(), size_t(end - start));
        fill(bytes + end, length - end);
        return image;
    }

    void fill(char *begin, qint64 count) const { std::memset(begin, padByte_, size_t(count)); }

    void reportFill(qint64 length) {
        report("filling output_data length:%1 with %2", length, padByte_);
    }

    template <typename... Numbers>
    void report(const char *text, Numbers... numbers) {
        QString line = QString::fromLatin1(text);
        ((line = line.arg(numbers)), ...);
        log_.append(line);
    }

    RefusedComposition refuse(Reason reason, qint64 askedSize, const char *text) {
        report(text, askedSize);
        return {reason, askedSize};
    }

    const CompositionInputs &inputs_;
    const qint64 padSize_;
    const int padByte_;
    QStringList log_;
};

} // namespace

// Kibibytes become bytes in 32-bit arithmetic, which wraps round for very large values.
qint32 CompositionInputs::padSize() const {
    const qint32 size = scanInt(pad_to).value_or(0);
    return size > 0 ? qint32(quint32(size) * quint32(kibibyte)) : size;
}

quint32 CompositionInputs::startAddress() const {
    return scanHexInt(rom_start_address).value_or(0);
}

const ByteBuffer &CompositionInputs::sourceBytes(CompositionSource source) const {
    return source == CompositionSource::ReadData ? read_from_chip_data : opened_bin_data;
}

Composition composeImage(const CompositionInputs &inputs) {
    return Composer(inputs).compose();
}

std::optional<CompositionSource> sourceOfBytes(const CompositionInputs &inputs,
                                               const Composition &composition) {
    if (!composition.image || lengthOf(inputs.sourceBytes(composition.source)) == 0)
        return std::nullopt;
    return composition.source;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Samples.h"

#include "image/ImageComposition.h"

#include <cstring>
#include <stdexcept>

namespace {

constexpr qint64 imageSize = 64 * mebibyte;
constexpr qint64 contentSize = 40 * mebibyte;
constexpr qint64 contentStart = 8 * mebibyte;
constexpr int rounds = 15;
constexpr double maxTimesTheLimit = 3;

CompositionInputs inputs() {
    CompositionInputs inputs;
    inputs.opened_bin_data = std::make_shared<QByteArray>(randomBytes(contentSize));
    inputs.rom_start_address = QString::number(contentStart, 16);
    inputs.pad_to = QString::number(imageSize / 1024);
    inputs.pad = true;
    return inputs;
}

/// The same bytes into memory that is there already: less than this cannot be done.
void fillWarm(char *image, const QByteArray &content) {
    std::memset(image, 0xFF, contentStart);
    std::memcpy(image + contentStart, content.constData(), contentSize);
    std::memset(image + contentStart + contentSize, 0xFF, imageSize - contentStart - contentSize);
}

} // namespace

void benchCompose(Table &table) {
    const CompositionInputs all = inputs();
    ByteBuffer image;
    QByteArray warm(imageSize, '\0');
    const auto medians = interleaved(rounds, {[&] {
                                                  const Stopwatch stopwatch;
                                                  // The image before it goes, as it does in the
                                                  // program.
                                                  image = *composeImage(all).image;
                                                  return stopwatch.milliseconds();
                                              },
                                              [&] {
                                                  const Stopwatch stopwatch;
                                                  fillWarm(warm.data(), *all.opened_bin_data);
                                                  return stopwatch.milliseconds();
                                              }});
    if (*image != warm)
        throw std::runtime_error("the composed image is not what it should be");
    table.compare("compose 64 MiB in memory", milliseconds(medians[0]),
                  {"memset + memcpy, warm", milliseconds(medians[1])}, maxTimesTheLimit);
}

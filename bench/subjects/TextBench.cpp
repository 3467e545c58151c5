// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Memory.h"
#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Samples.h"

#include "image/DisplayText.h"

#include <array>
#include <cerrno>
#include <iconv.h>
#include <stdexcept>

namespace {

constexpr qint64 textSize = 64 * mebibyte;
constexpr int rounds = 9;
constexpr double maxOfIconv = 0.4;
/// Far from a second copy, which would be one byte a byte or two.
constexpr double maxExtraMemory = 0.01;

/// One kind of text, and the encoding in which the C library gives the same units.
struct Sample {
    std::string name;
    const char *encoding;
    ByteBuffer bytes;
    bool singleByte;
};

/// Converts through one small buffer that stays in the cache: the cheapest way to use it. Gives the
/// number of UTF-16 units.
qsizetype unitsByIconv(const QByteArray &bytes, const char *encoding) {
    const iconv_t converter = iconv_open("UTF-16LE", encoding);
    std::array<char, 64 * 1024> buffer;
    char *in = const_cast<char *>(bytes.constData()); // iconv() leaves it alone
    auto inLeft = size_t(bytes.size());
    size_t written = 0;
    while (inLeft > 0) {
        char *out = buffer.data();
        size_t outLeft = buffer.size();
        if (iconv(converter, &in, &inLeft, &out, &outLeft) == size_t(-1) && errno != E2BIG)
            throw std::runtime_error("iconv refuses the text");
        written += buffer.size() - outLeft;
    }
    iconv_close(converter);
    return qsizetype(written / sizeof(char16_t));
}

std::vector<double> measureTimes(const Sample &sample) {
    qsizetype ours = 0;
    qsizetype theirs = 0;
    volatile quint64 sum = 0;
    const auto medians = interleaved(rounds, {[&] {
                                                  const Stopwatch stopwatch;
                                                  ours = DisplayText(sample.bytes).length();
                                                  return stopwatch.milliseconds();
                                              },
                                              [&] {
                                                  const Stopwatch stopwatch;
                                                  theirs =
                                                      unitsByIconv(*sample.bytes, sample.encoding);
                                                  return stopwatch.milliseconds();
                                              },
                                              [&] {
                                                  const Stopwatch stopwatch;
                                                  sum = passOver(*sample.bytes);
                                                  return stopwatch.milliseconds();
                                              }});
    if (ours != theirs)
        throw std::runtime_error("iconv tells another length of the " + sample.name);
    return medians;
}

void benchMemory(Table &table, const std::string &what, const Sample &sample) {
    const double before = heapInUse();
    const DisplayText text(sample.bytes);
    const double grown = (heapInUse() - before) / double(text.byteLength());
    const Figure ours = bytesPerByte(grown);
    if (sample.singleByte)
        table.limit(what + ", extra memory", ours, bytesPerByte(maxExtraMemory));
    else
        table.compare(what + ", extra memory", ours,
                      {"UTF-16 copy", bytesPerByte(sizeof(char16_t) * double(text.length()) /
                                                   double(text.byteLength()))});
}

void benchSample(Table &table, const Sample &sample) {
    const std::string what = "text of 64 MiB, " + sample.name;
    const auto medians = measureTimes(sample);
    const Figure ours = milliseconds(medians[0]);
    table.compare(what, ours,
                  {std::string("iconv(3) from ") + sample.encoding, milliseconds(medians[1])},
                  maxOfIconv);
    table.compare(what, ours, {"one pass over memory", milliseconds(medians[2])});
    benchMemory(table, what, sample);
}

Sample sample(const char *name, const char *encoding, QByteArray bytes, bool singleByte) {
    return {name, encoding, std::make_shared<QByteArray>(std::move(bytes)), singleByte};
}

/// Looks like ASCII almost to the end, so that all of it has to be looked at.
QByteArray lateLatin1(qint64 size) {
    QByteArray bytes = asciiText(size);
    bytes.back() = '\xE9';
    return bytes;
}

} // namespace

void benchText(Table &table) {
    benchSample(table, sample("random bytes", "ISO-8859-1", randomBytes(textSize), true));
    benchSample(table, sample("Latin-1 by its end", "ISO-8859-1", lateLatin1(textSize), true));
    benchSample(table, sample("ASCII", "UTF-8", asciiText(textSize), true));
    benchSample(table, sample("multi-byte", "UTF-8", multiByteText(textSize), false));
}

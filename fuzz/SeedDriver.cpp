// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

// Runs a target on its seeds with any compiler: on each as it is, cut off everywhere, and spoilt
// in ways that are the same every time.

namespace {

constexpr qsizetype maxCuts = 200;
constexpr int spoiltInputs = 3000;
constexpr qsizetype longestSpoilt = 4096;

/// The input that is being tried, and where it is kept for the one who has to find out why it
/// failed.
QByteArray current;
QByteArray keptInput;

void keepInput(int signal) {
    QFile file(QFile::decodeName(keptInput));
    if (file.open(QIODevice::WriteOnly))
        file.write(current);
    file.close();
    std::fprintf(stderr, "The input is kept in the file %s\n", keptInput.constData());
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void run(const QByteArray &input) {
    current = input;
    // In memory of just this size, so that whoever looks beyond it is noticed.
    const std::vector<std::uint8_t> bytes(input.begin(), input.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

void runCuts(const QByteArray &seed) {
    const qsizetype step = std::max<qsizetype>(1, seed.size() / maxCuts);
    for (qsizetype length = 0; length < seed.size(); length += step)
        run(seed.first(length));
}

/// Changes of single places, repeated and moved pieces.
class Spoiler {
public:
    explicit Spoiler(const QList<QByteArray> &seeds) : seeds_(seeds) {}

    QByteArray next() {
        QByteArray bytes = anySeed().left(longestSpoilt);
        for (int changes = 1 + below(4); changes > 0; --changes)
            change(bytes);
        return bytes;
    }

private:
    int below(qsizetype limit) { return limit < 1 ? 0 : int(random_() % unsigned(limit)); }
    const QByteArray &anySeed() { return seeds_[below(seeds_.size())]; }

    void change(QByteArray &bytes) {
        static constexpr char bytesThatTell[] =
            "\0\n\r\x1b;,=@\"\\:SxX09-+ %[]\x7f\x80\xbf\xc2\xed\xf4\xff";
        static const QByteArray telling(bytesThatTell, sizeof bytesThatTell - 1);
        const qsizetype at = below(bytes.size());
        switch (below(6)) {
        case 0:
            bytes.insert(at, char(random_()));
            break;
        case 1:
            bytes.insert(at, telling[below(telling.size())]);
            break;
        case 2:
            bytes.remove(at, 1 + below(16));
            break;
        case 3:
            bytes.insert(at, bytes.mid(below(bytes.size()), 1 + below(64)));
            break;
        case 4:
            bytes = bytes.left(at) + anySeed().mid(below(anySeed().size()), longestSpoilt);
            break;
        default:
            if (!bytes.isEmpty())
                bytes[at] = char(bytes[at] ^ (1 << below(8)));
        }
    }

    const QList<QByteArray> &seeds_;
    std::mt19937 random_{1};
};

QList<QByteArray> seedsIn(const QDir &folder) {
    QList<QByteArray> seeds;
    for (const QString &name : folder.entryList(QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            seeds.append(file.readAll());
    }
    return seeds;
}

} // namespace

/// The only argument is the folder of the seeds; the status is 0 if everything held for all.
int main(int count, char **arguments) {
    const QList<QByteArray> seeds = seedsIn(QDir(QFile::decodeName(arguments[count - 1])));
    mustHold(count == 2 && !seeds.isEmpty(), "there are seeds in the folder that is named");
    keptInput = QByteArray(arguments[0]) + ".failed";
    std::signal(SIGABRT, keepInput);
    std::signal(SIGSEGV, keepInput);
    for (const QByteArray &seed : seeds) {
        run(seed);
        runCuts(seed);
    }
    Spoiler spoiler(seeds);
    for (int input = 0; input < spoiltInputs; ++input)
        run(spoiler.next());
    std::printf("%d inputs made from %d seeds held.\n", spoiltInputs, int(seeds.size()));
    return 0;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "instruments/Pair.h"
#include "instruments/Stopwatch.h"
#include "instruments/Table.h"
#include "subjects/Benches.h"
#include "subjects/Peers.h"
#include "subjects/Samples.h"

#include "files/FileLoading.h"
#include "files/FileSaving.h"
#include "formats/ImageFlattening.h"
#include "formats/RecordReader.h"
#include "formats/RecordWriter.h"

#include <QTemporaryDir>

#include <stdexcept>
#include <unistd.h>

namespace {

constexpr qint64 imageSize = 64 * mebibyte;
constexpr qsizetype turn = 32 * 1024;
constexpr int rounds = 5;
constexpr double maxOfSrecCat = 0.25;
constexpr double maxOfObjcopy = 1.0;

/// Files of one image, in the format and raw.
class FormatFiles {
public:
    FormatFiles() {
        writeFile(path("in.bin"), randomBytes(imageSize));
        write();
        writeFile(path("in.hex"), readFile(path("ours.hex")));
    }

    QString path(const char *name) const { return folder_.filePath(QLatin1String(name)); }
    std::string word(const char *name) const { return path(name).toStdString(); }

    /// From in.hex to ours.bin, in turns as the window does it. Milliseconds.
    double read() const {
        const Stopwatch stopwatch;
        const ByteBuffer text = *loadWholeFile(path("in.hex"));
        RecordReader reader(RecordFormat::IntelHex);
        while (!reader.advance(*text, turn)) {
        }
        ImageFlattening flattening(reader.decoded().bytes, 0, '\xFF');
        while (!flattening.advance(mebibyte)) {
        }
        save("ours.bin", *flattening.image());
        return stopwatch.milliseconds();
    }

    /// From in.bin to ours.hex.
    double write() const {
        const Stopwatch stopwatch;
        const ByteBuffer image = *loadWholeFile(path("in.bin"));
        RecordWriter writer({}, image->size());
        while (!writer.advance(*image, turn)) {
        }
        save("ours.hex", writer.takeText());
        return stopwatch.milliseconds();
    }

private:
    void save(const char *name, const QByteArray &bytes) const {
        if (!saveWholeFile(path(name), bytes, Durability::ProgramEnd))
            throw std::runtime_error("a file could not be saved");
    }

    QTemporaryDir folder_;
};

struct OtherProgram {
    const char *program;
    std::vector<std::string> reading;
    std::vector<std::string> writing;
    double most;
};

std::vector<OtherProgram> otherPrograms(const FormatFiles &files) {
    const std::string bytes = files.word("in.bin");
    const std::string text = files.word("in.hex");
    const std::string toBytes = files.word("theirs.bin");
    const std::string toText = files.word("theirs.hex");
    return {{"srec_cat",
             {text, "-intel", "-o", toBytes, "-binary"},
             {bytes, "-binary", "-o", toText, "-intel"},
             maxOfSrecCat},
            {"objcopy",
             {"-I", "ihex", "-O", "binary", text, toBytes},
             {"-I", "binary", "-O", "ihex", bytes, toText},
             maxOfObjcopy}};
}

/// What one job has left for the disk must not be waited for by the next.
template <typename Work>
double settled(Work work) {
    ::sync();
    return work();
}

void compare(Table &table, const std::string &what, const OtherProgram &other,
             std::vector<std::string> words, const Job &ours) {
    const std::string program = findProgram(other.program);
    if (program.empty())
        return table.gap(what, other.program, "not installed");
    words.insert(words.begin(), program);
    const auto medians =
        interleaved(rounds, {[&] { return settled(ours); },
                             [&] { return settled([&] { return runCommand(words).wall; }); }});
    table.compare(what, milliseconds(medians[0]), {other.program, milliseconds(medians[1])},
                  other.most);
}

} // namespace

void benchFormats(Table &table) {
    const FormatFiles files;
    for (const OtherProgram &other : otherPrograms(files)) {
        compare(table, "read 64 MiB of Intel HEX", other, other.reading,
                [&] { return files.read(); });
        compare(table, "write 64 MiB as Intel HEX", other, other.writing,
                [&] { return files.write(); });
        if (readFile(files.path("ours.bin")) != readFile(files.path("in.bin")))
            throw std::runtime_error("other bytes came back");
    }
}

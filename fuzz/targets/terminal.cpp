// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "FuzzInput.h"
#include "support/Screen.h"
#include "widgets/TerminalText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

// The view shows the same however the output is cut and however often the view takes what changed,
// and what stood there before a run began or ended stays.

namespace {

/// These stand between the pieces of an input for what else happens to a terminal.
constexpr QChar runBegins(0xe000);
constexpr QChar runEnds(0xe001);

constexpr qsizetype longestTakenSingly = 1024;

class Watched {
public:
    void feed(QStringView piece) {
        terminal_.feed(piece);
        fed_ += piece.size();
    }
    void mark(QChar mark) {
        if (mark == runBegins)
            terminal_.beginRun();
        else
            terminal_.endRun();
        take();
        untouchable_ = text();
    }
    void take(qsizetype most = std::numeric_limits<qsizetype>::max()) {
        while (terminal_.hasUpdate())
            apply(terminal_.takeUpdate(most));
        fed_ = 0;
        mustHold(terminal_.pendingLength() == 0, "nothing waits when all was taken");
    }
    QString text() const {
        mustHold(screen_.text().startsWith(untouchable_), "what stood before a run stays");
        return screen_.text();
    }

private:
    void apply(const TerminalUpdate &update) {
        // A line feed for each line that was too wide, and one for each run.
        const qsizetype breaks = 2 + fed_ / TerminalText::longestLine;
        mustHold(update.text.size() <= fed_ + held + breaks + TerminalText::longestLine,
                 "an update is no larger than its input and one line");
        screen_.apply(update);
    }

    /// What an unfinished sequence held back.
    static constexpr qsizetype held = TerminalText::longestControlString + 1;

    TerminalText terminal_;
    Screen screen_;
    QString untouchable_;
    qsizetype fed_ = 0;
};

bool isMark(QChar unit) {
    return unit == runBegins || unit == runEnds;
}

/// Where the piece of \a output ends that begins at \a start and is about \a length units long. Who
/// cuts the output cuts between characters.
qsizetype endOfPiece(const QString &output, qsizetype start, qsizetype length) {
    qsizetype end = start;
    while (end < output.size() && end - start < length && !isMark(output[end]))
        ++end;
    const bool inPair = end < output.size() && end > start && output[end - 1].isHighSurrogate() &&
                        output[end].isLowSurrogate();
    return inPair ? end + 1 : end;
}

QString shown(const QString &output, qsizetype length, bool takesEach, qsizetype most) {
    Watched watched;
    for (qsizetype at = 0; at < output.size();) {
        const qsizetype end = endOfPiece(output, at, length);
        if (end == at)
            watched.mark(output[at++]);
        else
            watched.feed(QStringView(output).sliced(at, end - at));
        at = std::max(at, end);
        if (takesEach)
            watched.take(most);
    }
    watched.take(most);
    return watched.text();
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    FuzzInput input(data, size);
    const qsizetype piece = 2 + input.number(60);
    const QString output = QString::fromUtf8(input.rest());
    const QString whole = shown(output, output.size() + 1, false, output.size() + 1);
    mustHold(shown(output, 1, false, output.size() + 1) == whole,
             "character by character it is the same");
    mustHold(shown(output, piece, true, output.size() + 1) == whole, "in pieces it is the same");
    // Each update may be a whole line, so this takes long for wide ones.
    if (output.size() <= longestTakenSingly)
        mustHold(shown(output, 1, true, 1) == whole, "taken line by line it is the same");
    return 0;
}

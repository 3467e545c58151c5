// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ArrangingRun.h"

#include "base/TurnOfWork.h"
#include "base/Units.h"
#include <new>
#include <utility>

namespace {

/// Bytes between two looks at the clock.
constexpr qsizetype arrangedAtOnce = mebibyte;

QByteArrayView viewOf(const ArrangingRun::Source &source) {
    return QByteArrayView(std::as_const(*source.bytes))
        .sliced(source.range.offset, source.range.length);
}

} // namespace

ArrangingRun::ArrangingRun(QObject *parent) : QObject(parent) {
    connect(&turns_, &QTimer::timeout, this, &ArrangingRun::turn);
}

void ArrangingRun::start(const QList<Source> &sources, const Arrangement &arrangement) {
    stop();
    sources_ = sources;
    arrangement_ = arrangement;
    turns_.start(0);
}

void ArrangingRun::stop() {
    turns_.stop();
    work_.reset();
    facts_ = {};
    outcome_ = {};
    isDone_ = false;
    sources_.clear();
}

void ArrangingRun::turn() {
    try {
        isDone_ = worksForATurn([this] { return advance(); });
    } catch (const std::bad_alloc &) {
        stop();
        emit outOfMemory();
        return;
    }
    if (!isDone_)
        return;
    turns_.stop();
    emit done();
}

bool ArrangingRun::isWholeAsItStands() const {
    const Source &first = sources_.first();
    return arrangement_.changesNothing() && first.range.length == first.bytes->size();
}

bool ArrangingRun::advance() {
    // Taken anew each time: an edit of the bytes may move them.
    QList<QByteArrayView> views;
    for (const Source &source : std::as_const(sources_))
        views.append(viewOf(source));
    if (!count(views, outcome_.sourceChecksums))
        return false;
    if (isWholeAsItStands())
        return true;
    if (outcome_.parts.isEmpty()) {
        if (!work_)
            work_.emplace(arrangement_, lengthsOf(views));
        if (work_->advance(views, arrangedAtOnce))
            outcome_.parts = work_->takeParts();
        return false;
    }
    return count({outcome_.parts.begin(), outcome_.parts.end()}, outcome_.checksums);
}

// Goes on with the \a checksums of \a parts. True once there is one of each.
bool ArrangingRun::count(const QList<QByteArrayView> &parts, QList<quint32> &checksums) {
    if (checksums.size() == parts.size())
        return true;
    if (facts_.advance(parts[checksums.size()], arrangedAtOnce)) {
        checksums.append(facts_.facts().crc32);
        facts_ = {};
    }
    return checksums.size() == parts.size();
}

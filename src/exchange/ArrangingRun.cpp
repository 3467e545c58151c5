// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "exchange/ArrangingRun.h"

#include "base/TurnOfWork.h"

#include <utility>

namespace {

QByteArrayView viewOf(const ArrangingRun::Source &source) {
    return QByteArrayView(std::as_const(*source.bytes))
        .sliced(source.range.offset, source.range.length);
}

} // namespace

ArrangingRun::ArrangingRun(QObject *parent) : QObject(parent), work_([this] { return advance(); }) {
    connect(&work_, &TurnedWork::done, this, [this] {
        isDone_ = true;
        emit done();
    });
    connect(&work_, &TurnedWork::outOfMemory, this, [this] {
        stop();
        emit outOfMemory();
    });
}

void ArrangingRun::start(const QList<Source> &sources, const Arrangement &arrangement) {
    stop();
    sources_ = sources;
    arrangement_ = arrangement;
    work_.start();
}

void ArrangingRun::stop() {
    work_.stop();
    rearranging_.reset();
    facts_ = {};
    outcome_ = {};
    isDone_ = false;
    sources_.clear();
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
        if (!rearranging_)
            rearranging_.emplace(arrangement_, lengthsOf(views));
        if (rearranging_->advance(views, bytesInStep))
            outcome_.parts = rearranging_->takeParts();
        return false;
    }
    return count({outcome_.parts.begin(), outcome_.parts.end()}, outcome_.checksums);
}

// Goes on with the \a checksums of \a parts. True once there is one of each.
bool ArrangingRun::count(const QList<QByteArrayView> &parts, QList<quint32> &checksums) {
    if (checksums.size() == parts.size())
        return true;
    if (facts_.advance(parts[checksums.size()], bytesInStep)) {
        checksums.append(facts_.facts().crc32);
        facts_ = {};
    }
    return checksums.size() == parts.size();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/TurnedWork.h"
#include "image/PastedText.h"

#include <QObject>

#include <optional>

/// Reads a copied text as bytes, on turns of the event loop that are shorter than a frame. What
/// takes no longer than one is read at once.
class PasteReading final : public QObject {
    Q_OBJECT

public:
    explicit PasteReading(QObject *parent = nullptr);

    /// Reads \a text, and no longer what was being read before. finished() or outOfMemory()
    /// follows, at once if it is short.
    void read(const QString &text, PastedText::As as);
    /// True while more turns are needed.
    bool isReading() const { return work_.isRunning(); }

signals:
    /// All of \a text has been read, or there was trouble.
    void finished(const PastedText &text);
    /// There is not enough memory for its bytes.
    void outOfMemory();

private:
    void finish();

    std::optional<PastedText> text_;
    TurnedWork work_;
};

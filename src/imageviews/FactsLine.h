// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "imageviews/BlockFacts.h"
#include "imageviews/ShownImageReader.h"
#include "widgets/FittingLine.h"

#include <QStringList>
#include <QTimer>

#include <functional>
#include <optional>

class GridView;

/// What tells the shown image from others, and the byte under the grid's cursor or the block that
/// is selected, in one line. They are read in turns of the event loop, so they hold nobody up,
/// however long they are; checksums stand open until they are known.
///
/// The text can be selected. Where there is no room for all, the words that say whose bytes
/// they are become shorter first, then the checksums are left out; the tool tip has the whole.
class FactsLine final : public FittingLine {
    Q_OBJECT

public:
    /// Gives the image that is shown at the moment of the call; nothing if none is.
    using Source = std::function<std::optional<ShownImage>()>;

    explicit FactsLine(QWidget *parent = nullptr);

    /// Follows the selection and the contents of \a grid and says the facts of what \a shown gives.
    /// Both must last as long as the window's event loop.
    void follow(const GridView &grid, Source shown);
    /// Looks at the image and at the cursor anew, a turn of the event loop later.
    void refresh();

    /// Puts the selected text on the clipboard, or the whole if none or all is selected.
    void copyWords() const;
    /// Reads the SHA-256 of the image and puts it on the clipboard when it is known. Nothing comes
    /// of it if there are no bytes, or if they change before that.
    void askForSha256();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    QString fittingText() const override;

private:
    void turn();
    ByteRange selectedBlock() const;
    bool readOn(const ShownImage &image);
    void takeWords(const std::optional<ShownImage> &image);
    QStringList factsOf(const ShownImage &image) const;
    QString byteUnderCursor(const ByteBuffer &bytes) const;
    int roomForText() const;
    QString withFittingOrigin(const QString &facts) const;

    Source shown_;
    const GridView *grid_ = nullptr;
    QTimer turns_;
    ShownImageReader reader_;
    BlockFacts block_;
    QString origin_;
    QString facts_; ///< the words on them
    QString brief_; ///< the same without what a glance needs least
};

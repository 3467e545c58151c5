// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "imageviews/KnownImage.h"
#include "imageviews/MapCells.h"
#include "imageviews/ShownImageReader.h"

#include <QAbstractSlider>
#include <QTimer>

#include <functional>
#include <optional>

class GridView;

/// The whole of the shown image as a strip beside the grid: what its parts look like, where it
/// differs from another image, and, framed, what of it is in view. A click or a drag leads there,
/// and so do the keys of a slider. The value is the address of the first byte in view.
///
/// The image is counted in turns of the event loop, which hold nobody up, however long it is; after
/// an edit only the blocks that it touched. Without bytes there is no map, but its room is kept on
/// the tabs that show an image.
class ImageMap final : public QAbstractSlider {
    Q_OBJECT

public:
    /// Gives the image that is shown at the moment of the call; nothing if none is.
    using Source = std::function<std::optional<ShownImage>()>;

    explicit ImageMap(QWidget *parent = nullptr);

    /// Follows what \a grid shows of the image that \a shown gives, and leads it. Both must last
    /// as long as the window's event loop.
    void follow(GridView &grid, Source shown);
    /// Looks at the image anew, a turn of the event loop later. To be called when another one is
    /// shown.
    void refresh();
    /// Looks anew at the bytes of \a changed, which were edited.
    void takeChange(ByteRange changed);
    /// Marks the parts of the image with \a differing blocks, until the next call. To be called at
    /// each change.
    void setDiffering(const DifferingBlocks &differing);

    /// What assistive technology says of the value: where the view is, and what is there.
    QString valueWords() const;
    /// Which bytes the map shows at \a y, a height in pixels, and what they look like.
    QString wordsAt(int y) const;
    /// The frame around the part that is in view, in pixels.
    QRect viewFrame() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void sliderChange(SliderChange change) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void turn();
    void takeImage(const std::optional<ShownImage> &image);
    void followScrolling();
    void goToValue();
    void goTo(int y);
    /// The address of what the map shows at \a y, a height in pixels; nothing without bytes.
    std::optional<qint64> addressAt(int y) const;
    void showCells();
    QRect strip() const;

    Source shown_;
    GridView *grid_ = nullptr;
    QTimer turns_;
    KnownImage known_;
    BlockMap map_;
    DifferingBlocks differing_;
    QList<MapCell> cells_;
    bool following_ = false;
};

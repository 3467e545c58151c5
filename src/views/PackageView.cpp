// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/PackageView.h"

#include "language/PinTally.h"
#include "widgets/PlainToolTip.h"

#include <QBuffer>
#include <QImage>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

#include <algorithm>

PackageView::PackageView(QWidget *parent) : QWidget(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

void PackageView::setPicture(const PackagePicture &picture, const QStringList &failed) {
    picture_ = picture;
    const QString what = failed.isEmpty() ? noPinFailedWords() : failed.join(QStringLiteral(". "));
    setAccessibleDescription(tr("%1. %2.").arg(picture.caption, what));
    setToolTip(plainToolTip(picture.caption));
    updateGeometry();
    update();
}

QByteArray PackageView::png() const {
    constexpr int dotsPerPixel = 2;
    QSize size = sizeHint();
    size.setWidth(std::max(size.width(), fontMetrics().horizontalAdvance(picture_.caption) +
                                             2 * fontMetrics().height()));
    QImage image(size * dotsPerPixel, QImage::Format_RGB32);
    image.setDevicePixelRatio(dotsPerPixel);
    image.fill(palette().color(QPalette::Base));
    QPainter painter(&image);
    painter.setFont(font());
    drawPackage(painter, QRect(QPoint(), size), picture_, palette());
    painter.end();
    QBuffer file;
    image.save(&file, "PNG");
    return file.data();
}

QSize PackageView::sizeHint() const {
    return packageSize(picture_.pins.size(), font(), picture_.plannedRuns);
}

void PackageView::paintEvent(QPaintEvent *) {
    QStylePainter painter(this);
    drawPackage(painter, rect(), picture_, palette());
    if (!hasFocus())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "views/PackageDrawing.h"

#include <QStringList>
#include <QWidget>

/// A chip drawn from above with what came of its pins. What the picture tells is its accessible
/// description as well.
class PackageView final : public QWidget {
    Q_OBJECT

public:
    explicit PackageView(QWidget *parent = nullptr);

    /// Shows \a picture; \a failed are the sentences of the pins that failed in it.
    void setPicture(const PackagePicture &picture, const QStringList &failed);
    const PackagePicture &picture() const { return picture_; }

    /// The picture as the bytes of a PNG file, with its whole caption.
    QByteArray png() const;

    /// Room for the whole package, which grows with the font.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    PackagePicture picture_;
};

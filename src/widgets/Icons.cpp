// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/Icons.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

/// Outside of any namespace, as the resource system wants it: a static library's resources are not
/// registered by themselves.
static void registerIcons() {
    Q_INIT_RESOURCE(widget_icons);
}

namespace {

const QString iconFolder = QStringLiteral(":/velm/icons/");
const QString iconSuffix = QStringLiteral(".svg");

/// Draws one SVG at the very size that is asked for, so that lines stay crisp at every size and
/// on every screen.
class ThemedIconEngine final : public QIconEngine {
public:
    ThemedIconEngine(const QByteArray &drawing, const QColor &color, const QColor &disabledColor)
        : drawing_(drawing), color_(color), disabledColor_(disabledColor) {}

    void paint(QPainter *painter, const QRect &place, QIcon::Mode mode, QIcon::State) override {
        const QColor &color = mode == QIcon::Disabled ? disabledColor_ : color_;
        QByteArray drawing = drawing_;
        QSvgRenderer renderer(drawing.replace("currentColor", color.name().toLatin1()));
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(painter, place);
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new ThemedIconEngine(*this); }

private:
    QByteArray drawing_;
    QColor color_;
    QColor disabledColor_;
};

QIcon drawnIcon(const QString &path, const QColor &color, const QColor &disabledColor) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new ThemedIconEngine(file.readAll(), color, disabledColor));
}

QString pathOf(const QString &name) {
    registerIcons();
    return iconFolder + name + iconSuffix;
}

} // namespace

QIcon themedIcon(const QString &name, const QPalette &palette) {
    return drawnIcon(pathOf(name), palette.color(QPalette::Active, QPalette::ButtonText),
                     palette.color(QPalette::Disabled, QPalette::ButtonText));
}

QIcon coloredIcon(const QString &name, const QColor &color) {
    return drawnIcon(pathOf(name), color, color);
}

// In its own colours. The toolkit's own way needs a plugin that a system may not have.
QIcon programIcon() {
    registerIcons();
    return drawnIcon(QStringLiteral(":/velm/velm.svg"), QColor(), QColor());
}

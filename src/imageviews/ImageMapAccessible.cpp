// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "imageviews/ImageMapAccessible.h"

#include "imageviews/ImageMap.h"

#include <QAccessibleWidget>

namespace {

class ImageMapAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit ImageMapAccessible(ImageMap *map) : QAccessibleWidget(map, QAccessible::Slider) {}

    void *interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? map()->valueWords() : QAccessibleWidget::text(kind);
    }

    QVariant currentValue() const override { return map()->value(); }
    void setCurrentValue(const QVariant &value) override { map()->setValue(value.toInt()); }
    QVariant minimumValue() const override { return map()->minimum(); }
    QVariant maximumValue() const override { return map()->maximum(); }
    QVariant minimumStepSize() const override { return map()->singleStep(); }

private:
    ImageMap *map() const { return static_cast<ImageMap *>(widget()); }
};

QAccessibleInterface *createForMap(const QString &className, QObject *object) {
    if (className != u"ImageMap")
        return nullptr;
    return new ImageMapAccessible(static_cast<ImageMap *>(object));
}

} // namespace

void installImageMapAccessibility() {
    QAccessible::installFactory(createForMap);
}

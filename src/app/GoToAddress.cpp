// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "app/GoToAddress.h"

#include "control/AppDelegate.h"
#include "control/Messages.h"
#include "files/ByteBuffer.h"
#include "grid/GridSteps.h"
#include "grid/GridView.h"
#include "image/AddressWords.h"
#include "image/TypedAddress.h"

#include <QLineEdit>

GoToAddress::GoToAddress(QLineEdit &field, GridView &grid, Messages &messages,
                         const AppDelegate &delegate, QObject *parent)
    : QObject(parent), field_(field), grid_(grid), messages_(messages), delegate_(delegate) {
    connect(&field, &QLineEdit::returnPressed, this, &GoToAddress::go);
    connect(&field, &QLineEdit::textChanged, this, &GoToAddress::forgetTrouble);
    connect(&delegate, &AppDelegate::shownContentChanged, this, &GoToAddress::forgetTrouble);
    connect(&delegate, &AppDelegate::shownBytesChanged, this, &GoToAddress::forgetTrouble);
}

void GoToAddress::go() {
    const auto place = placeOf(field_.text().trimmed());
    if (const QString *sentence = place.failure())
        return messages_.say(Topic::Address, *sentence);
    forgetTrouble();
    grid_.showAddress(*place);
    grid_.setFocus(Qt::OtherFocusReason);
}

void GoToAddress::forgetTrouble() {
    messages_.happened(Event::AddressChanged);
}

Result<qint64, QString> GoToAddress::placeOf(const QString &address) const {
    if (grid_.gridModel()->heading() != GridHeading::Bytes)
        return tr("There are no addresses among the logic test results.");
    const auto typed = typedAddress(address);
    if (!typed)
        return noAddressWords(address);
    const qsizetype length = lengthOf(delegate_.state().display_data);
    if (length == 0)
        return tr("There are no bytes to go to.");
    const auto offset = typed->offset(quint64(byteOfCell(grid_.currentIndex()).value_or(0)));
    if (!offset || *offset >= quint64(length))
        return noByteWords(address, length);
    return qint64(*offset);
}

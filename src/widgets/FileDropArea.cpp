// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/FileDropArea.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace {

/// The path of the only file in \a drag; empty if there is none.
QString onlyFile(const QMimeData *drag) {
    const QList<QUrl> urls = drag->urls();
    return urls.size() == 1 ? urls.first().toLocalFile() : QString();
}

} // namespace

FileDropArea::FileDropArea(const QString &text, QWidget *area) : QLabel(text, area) {
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setFrameShape(QFrame::Box);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Highlight);
    setForegroundRole(QPalette::HighlightedText);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    area->setAcceptDrops(true);
    area->installEventFilter(this);
}

bool FileDropArea::eventFilter(QObject *area, QEvent *event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        auto *drag = static_cast<QDropEvent *>(event);
        const bool isTaken = !onlyFile(drag->mimeData()).isEmpty();
        setHeld(isTaken);
        drag->setDropAction(Qt::CopyAction);
        drag->setAccepted(isTaken);
        return true;
    }
    case QEvent::DragLeave:
        setHeld(false);
        return true;
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        const QString path = onlyFile(drop->mimeData());
        setHeld(false);
        drop->setDropAction(Qt::CopyAction);
        drop->setAccepted(!path.isEmpty());
        if (!path.isEmpty())
            emit dropped(path);
        return true;
    }
    default:
        return QLabel::eventFilter(area, event);
    }
}

void FileDropArea::setHeld(bool held) {
    setGeometry(parentWidget()->rect());
    raise();
    setVisible(held);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "widgets/FileDropArea.h"

#include <QDropEvent>
#include <QLineEdit>
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
    constexpr int frame = 3;
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(frame);
    setAutoFillBackground(true);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    area->setAcceptDrops(true);
    area->installEventFilter(this);
    const QList<QLineEdit *> fields = area->findChildren<QLineEdit *>();
    for (QLineEdit *field : fields)
        field->installEventFilter(this);
}

bool FileDropArea::eventFilter(QObject *area, QEvent *event) {
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        return takes(area, static_cast<QDropEvent *>(event));
    case QEvent::DragLeave:
        setHeld(false);
        break;
    case QEvent::Drop:
        if (!takes(area, static_cast<QDropEvent *>(event)))
            break;
        setHeld(false);
        if (event->isAccepted())
            emit dropped(onlyFile(static_cast<QDropEvent *>(event)->mimeData()));
        return true;
    default:
        break;
    }
    return QLabel::eventFilter(area, event);
}

// False if \a drag is left to \a area.
bool FileDropArea::takes(QObject *area, QDropEvent *drag) {
    const bool isFile = !onlyFile(drag->mimeData()).isEmpty();
    setHeld(isFile);
    if (!isFile && area != parentWidget())
        return false;
    drag->setDropAction(Qt::CopyAction);
    drag->setAccepted(isFile);
    return true;
}

void FileDropArea::setHeld(bool held) {
    setGeometry(parentWidget()->rect());
    raise();
    setVisible(held);
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "views/SideWindow.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QVBoxLayout>

QDialog *makeSideWindow(QWidget *window, const QString &name, const QString &title,
                        QWidget *content) {
    auto *dialog = new QDialog(window);
    dialog->setObjectName(name);
    dialog->setWindowTitle(title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto *layout = new QVBoxLayout(dialog);
    layout->addWidget(content, 1);
    layout->addWidget(buttons);
    return dialog;
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "devices/DeviceListView.h"
#include "window/WindowFixture.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

/// The device search panel, opened by its button, and its controls by their names.
struct Panel {
    explicit Panel(WindowFixture &velm)
        : dialog(velm.delegate().outlets.searchDevicesWindow),
          term(dialog->findChild<QLineEdit *>(QStringLiteral("devicesearchterm"))),
          filter(dialog->findChild<QLineEdit *>(QStringLiteral("filterField"))),
          list(dialog->findChild<DeviceListView *>(QStringLiteral("tableview"))),
          likely(dialog->findChild<DeviceListView *>(QStringLiteral("likelyView"))),
          search(dialog->findChild<QPushButton *>(QStringLiteral("searchButton"))),
          stop(dialog->findChild<QPushButton *>(QStringLiteral("stopButton"))),
          ok(dialog->findChild<QPushButton *>(QStringLiteral("OKButton"))),
          cancel(dialog->findChild<QPushButton *>(QStringLiteral("cancelButton"))),
          remark(dialog->findChild<QLabel *>(QStringLiteral("remarkLabel"))) {
        velm.click(velm.controls().btn_search);
    }

    void searchFor(const QString &text) const {
        term->setText(text);
        QTest::keyClick(term, Qt::Key_Return);
    }
    QStringList names() const { return namesIn(*list); }
    static QStringList namesIn(const DeviceListView &view) {
        QStringList all;
        for (int row = 0; row < view.model()->rowCount(); ++row)
            all.append(view.model()->index(row, 0).data().toString());
        return all;
    }
    void select(int row) const { list->setCurrentIndex(list->model()->index(row, 0)); }

    QDialog *dialog;
    QLineEdit *term;
    QLineEdit *filter;
    DeviceListView *list;
    DeviceListView *likely;
    QPushButton *search;
    QPushButton *stop;
    QPushButton *ok;
    QPushButton *cancel;
    QLabel *remark;
};

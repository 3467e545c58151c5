// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class QDialog;
class QString;
class QWidget;

/// A window with \a content above a button that closes it, beside \a window and not in its way:
/// nothing stops while it is open. It is called \a name among the program's objects and \a title
/// (translated) for people, and is gone once it is closed.
QDialog *makeSideWindow(QWidget *window, const QString &name, const QString &title,
                        QWidget *content);

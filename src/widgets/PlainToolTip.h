// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

class QString;
class QWidget;

/// Makes \a text, as it stands and whatever is in it, the tool tip of \a widget, wrapped where it
/// is long. Assistive technology gets the same, without the marks that wrap it.
void setPlainToolTip(QWidget &widget, const QString &text);

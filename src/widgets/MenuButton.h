// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QPushButton>

/// A button with a menu whose entries assistive technology finds below the button at any time,
/// not only while the menu is open. Opening the menu that way does not keep the caller waiting
/// until it is closed, as it would with a plain button.
class MenuButton final : public QPushButton {
    Q_OBJECT

public:
    using QPushButton::QPushButton;
};

/// Makes every MenuButton accessible as described. To be called once, before the first window.
void installMenuButtonAccessibility();

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

/// Makes every ImageMap a slider to assistive technology, whose value is spoken as a place and
/// what is there. To be called once, before the first window.
void installImageMapAccessibility();

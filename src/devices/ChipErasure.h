// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// True if the chip that the tool knows by the name \a device can only lose bits when it is
/// burned: an EPROM, which light erases, or one that nothing erases. The tool does not say so; the
/// names of these chips do, by 27 and a size behind the maker's letters. Families of other makers
/// that are numbered likewise and erased electrically are not among them.
bool losesBitsOnly(const QString &device);

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QVariantMap>

#include <optional>

/// INI text as a whole: lines of "key=value" in sections, comments, and lines that people left
/// blank. A key of the section General, or of none, goes by its name, that of any other section as
/// "section/name". Names are plain words and stand in the text as they are.
namespace iniText {

/// Every key of \a content with its value as of iniValue::decoded(); the last line of a key wins.
/// Nothing if \a content is damaged: no UTF-8 text without control characters, or with a line that
/// is neither blank nor a comment, a section or an entry. Stricter than the toolkit's INI reader,
/// which takes what it understands and drops the rest when it writes.
std::optional<QVariantMap> values(const QByteArray &content);

/// \a content, which is not damaged, with the values of \a changes in place of the older ones;
/// what is new goes into its section, in alphabetical order where the section keeps one.
/// Everything else stays as it is, byte for byte.
QByteArray changed(const QByteArray &content, const QVariantMap &changes);

} // namespace iniText

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "language/CommandDoubt.h"
#include "language/CommandLine.h"
#include "language/ImageEncoding.h"

#include <QString>

#include <optional>

/// What a run would be about, at the moment of the press; most of it is for Write and Verify.
struct BurnSituation {
    Operation operation = WriteOperation;
    /// False where a composition was refused.
    bool hasImage = true;
    /// Of the data to burn as shown, in bytes; 0 without an image.
    qint64 imageLength = 0;
    /// What the tool would take those data for.
    ImageEncoding encoding = ImageEncoding::Raw;
    /// The file that the tool is going to get, and whether it holds the image as shown, if that
    /// can be found out.
    QString path;
    Result<bool> holdsImage = true;
    /// Whether the image could be written there, or why not.
    Result<void> written;
    /// What is going to be run.
    CommandDoubt command;

    /// The file is known to hold the image as shown.
    bool fileIsImage() const { return holdsImage && *holdsImage; }
};

/// A reason to ask the user before the tool is started.
struct BurnDoubt {
    /// Tells one reason from another.
    QString key;
    /// Translated; ends with what a second press does.
    QString sentence;
    /// Writing the image once more may do away with the reason.
    bool canWriteAgain = false;
};

/// What is to be said of a file that was just opened, if the tool would decode it; else empty.
/// \a name is what to call it.
QString decodingRemark(ImageEncoding encoding, const QString &name);

/// The reasons to ask before \a situation goes on, as one: that about its command and, if it takes
/// an image, the most important one about that. Nothing if there is none.
std::optional<BurnDoubt> doubtAbout(const BurnSituation &situation);

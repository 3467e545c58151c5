// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "language/DeviceListing.h"

#include "base/NumberWords.h"
#include "files/TextLines.h"

#include <QCoreApplication>

#include <cerrno>

namespace {

class ListingWords {
    Q_DECLARE_TR_FUNCTIONS(DeviceListing)

public:
    static QString tooManyLines() {
        return tr("it has more than %1 lines").arg(grouped(maxListLines));
    }
};

} // namespace

Result<DeviceListing> readDeviceListing(QStringView text) {
    DeviceListing listing;
    listing.looksCut = !text.endsWith(u'\n');
    LineCursor lines(text);
    while (const auto line = lines.next()) {
        if (++listing.lines > maxListLines)
            return Failure{ListingWords::tooManyLines(), E2BIG};
        if (!line->isEmpty())
            listing.names.append(line->toString());
    }
    return listing;
}

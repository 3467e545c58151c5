// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "tool/PluggedProgrammers.h"

#include "files/SystemName.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace {

struct Model {
    QStringView vendorId;
    QStringView productId;
    QStringView name;
};

constexpr std::array<Model, 3> models{{
    {u"04d8", u"e11c", u"TL866A/CS"},
    {u"a466", u"0a53", u"TL866II+, T48 or T56"},
    {u"a466", u"1a86", u"T76"},
}};

/// What the system says in the file \a name of \a device; empty if it says nothing.
QString attribute(const QDir &device, const char *name) {
    constexpr qint64 longest = 64;
    QFile file(device.filePath(QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromLatin1(file.read(longest)).trimmed().toLower();
}

/// The path of the node of \a bus and \a device, both of which have three digits there.
QString nodePath(const QString &folder, const QString &bus, const QString &device) {
    constexpr int digits = 3;
    return folder + u'/' + bus.rightJustified(digits, u'0') + u'/' +
           device.rightJustified(digits, u'0');
}

UsbProgrammer::Access accessTo(const QString &node) {
    const QByteArray path = QFile::encodeName(node);
    if (::faccessat(AT_FDCWD, path.constData(), W_OK, AT_EACCESS) == 0)
        return UsbProgrammer::Access::Granted;
    return saysMissing(errno) ? UsbProgrammer::Access::NoNode : UsbProgrammer::Access::Refused;
}

} // namespace

std::optional<QList<UsbProgrammer>> pluggedProgrammers(const UsbFolders &folders) {
    const QDir devices(folders.devices);
    if (!devices.isReadable())
        return std::nullopt;
    QList<UsbProgrammer> found;
    for (const QString &entry : devices.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        const QDir device(devices.filePath(entry));
        const QString vendor = attribute(device, "idVendor");
        const QString product = attribute(device, "idProduct");
        for (const Model &model : models) {
            if (vendor != model.vendorId || product != model.productId)
                continue;
            const QString node =
                nodePath(folders.nodes, attribute(device, "busnum"), attribute(device, "devnum"));
            found.append({model.name.toString(), vendor, product, node, accessTo(node)});
        }
    }
    return found;
}

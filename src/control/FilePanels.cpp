// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/FilePanels.h"

#include "files/SystemName.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QSettings>

#include <utility>

namespace {

QString nameFilter(const FilePanelRequest &request) {
    QStringList patterns;
    for (const QString &extension : request.extensions)
        patterns.append(QStringLiteral("*.") + extension);
    return QStringLiteral("%1 (%2)").arg(request.typeName, patterns.join(u' '));
}

void prepare(QFileDialog &panel, const FilePanelRequest &request) {
    const bool saving = request.kind == FilePanelRequest::Kind::Save;
    panel.setAcceptMode(saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    panel.setFileMode(saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    if (!request.extensions.isEmpty())
        panel.setNameFilter(nameFilter(request));
    panel.setOption(QFileDialog::DontConfirmOverwrite, !request.isWholeName);
    if (!request.folder.isEmpty())
        panel.setDirectory(request.folder);
    if (!request.suggestedName.isEmpty())
        panel.selectFile(request.suggestedName);
}

/// With each panel that goes, the toolkit saves how it looked in a file of all its programs. It
/// waits for whoever has locked that, half a minute for one that was killed on another machine.
/// Where no folder can be it waits for nobody, and saves nothing.
void keepToolkitFromSaving() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

/// What a file is called that is to be saved as \a path. A name without an ending gets the first of
/// \a extensions, unless there is a file of that very name: the panel has asked about this one.
QString withEnding(const QString &path, const QStringList &extensions) {
    const bool isComplete =
        extensions.isEmpty() || QFileInfo(path).fileName().contains(u'.') || QFile::exists(path);
    return isComplete ? path : path + u'.' + extensions.first();
}

} // namespace

QString fileTypes::binaryImages() {
    return QCoreApplication::translate("FilePanels", "Binary images");
}

QString fileTypes::texts() {
    return QCoreApplication::translate("FilePanels", "Text files");
}

void DesktopFilePanels::begin(QWidget *parent, const FilePanelRequest &request,
                              std::function<void(const QString &path)> chosen) {
    auto *panel = new QFileDialog(parent, request.title);
    keepToolkitFromSaving();
    if (!look_.isEmpty())
        panel->restoreState(look_);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::WindowModal);
    prepare(*panel, request);
    QObject::connect(panel, &QFileDialog::fileSelected, panel,
                     [this, parent, request, chosen = std::move(chosen)](const QString &path) {
                         take(path, parent, request, chosen);
                     });
    QObject::connect(panel, &QFileDialog::finished, panel,
                     [this, panel] { look_ = panel->saveState(); });
    panel->open();
}

// A platform's own panel asks about what was typed, and knows nothing of an ending that comes to it
// later. So the ending is added here, and a name that means a file only then is asked about anew.
void DesktopFilePanels::take(const QString &path, QWidget *parent, FilePanelRequest request,
                             const std::function<void(const QString &path)> &chosen) {
    const bool isWholeName = request.kind == FilePanelRequest::Kind::Save && request.isWholeName;
    const QString whole = isWholeName ? withEnding(path, request.extensions) : path;
    if (whole == path || isMissing(whole))
        return chosen(whole);
    request.folder = QFileInfo(whole).path();
    request.suggestedName = QFileInfo(whole).fileName();
    begin(parent, request, chosen);
}

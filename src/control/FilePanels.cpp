// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "control/FilePanels.h"

#include <QFileDialog>

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
    if (saving && !request.extensions.isEmpty())
        panel.setDefaultSuffix(request.extensions.first());
    if (!request.folder.isEmpty())
        panel.setDirectory(request.folder);
    if (!request.suggestedName.isEmpty())
        panel.selectFile(request.suggestedName);
}

} // namespace

void DesktopFilePanels::begin(QWidget *parent, const FilePanelRequest &request,
                              std::function<void(const QString &path)> chosen) {
    auto *panel = new QFileDialog(parent, request.title);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::WindowModal);
    prepare(*panel, request);
    QObject::connect(panel, &QFileDialog::fileSelected, panel, std::move(chosen));
    panel->open();
}

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

/// What kinds of files are called in panels (translated).
namespace fileTypes {
QString binaryImages();
QString texts();
} // namespace fileTypes

/// What a file panel is asked for.
struct FilePanelRequest {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    QString title;
    QString folder;         ///< shown first; empty for the platform's choice
    QString suggestedName;  ///< for saving; empty for none
    QString typeName;       ///< what the offered files are called, for instance "Binary images"
    QStringList extensions; ///< the extensions offered, without dots
    /// For saving: the name is that of one file, not the beginning of several, so an ending is
    /// added to it and the user is asked before a file of that name is replaced.
    bool isWholeName = true;
};

/// The platform's file panels, shown as sheets on a window. A seam, so that tests can answer for
/// the user.
class FilePanels {
public:
    FilePanels() = default;
    FilePanels(const FilePanels &) = delete;
    FilePanels &operator=(const FilePanels &) = delete;
    virtual ~FilePanels() = default;

    /// Shows a panel on \a parent and returns at once; \a chosen gets the absolute path if the
    /// user confirms and is not called otherwise. A save panel may create folders and, where
    /// it asks for a whole name, adds the first extension to a name without one and asks by itself
    /// before an existing file is replaced: about the name with its extension, too.
    virtual void begin(QWidget *parent, const FilePanelRequest &request,
                       std::function<void(const QString &path)> chosen) = 0;

    /// How the panels looked last, in the toolkit's own form; empty if they have no look to keep.
    virtual QByteArray look() const = 0;
    /// Has the next panel look as \a look says, unless it is empty.
    virtual void setLook(const QByteArray &look) = 0;
};

/// The file panels of the desktop. Where there is no look yet, the first one has that of other
/// programs of the toolkit.
class DesktopFilePanels final : public FilePanels {
public:
    void begin(QWidget *parent, const FilePanelRequest &request,
               std::function<void(const QString &path)> chosen) override;
    QByteArray look() const override { return look_; }
    void setLook(const QByteArray &look) override { look_ = look; }

private:
    void take(const QString &path, QWidget *parent, FilePanelRequest request,
              const std::function<void(const QString &path)> &chosen);

    QByteArray look_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/ByteBuffer.h"
#include "orders/Arrangement.h"

#include <QList>
#include <QWidget>

#include <memory>

namespace Ui {
class PartList;
}

/// The files that are joined, in an order that the user can change. The one that is imported is
/// always among them.
class PartList final : public QWidget {
    Q_OBJECT

public:
    /// One of them.
    struct Part {
        QString path;
        ByteBuffer bytes;           ///< null while they are not known
        bool isTheImported = false; ///< else it was added
    };

    explicit PartList(QWidget *parent = nullptr);
    ~PartList() override;

    Ui::PartList &controls() { return *controls_; }

    /// The file that is imported; its bytes are not known yet.
    void setImported(const QString &path);
    /// The bytes of that file, or null.
    void setImportedBytes(const ByteBuffer &bytes);
    /// True if the file at \a path is one of the parts.
    bool has(const QString &path) const;
    /// Adds the file at \a path, with its \a bytes, behind the others.
    void add(const QString &path, const ByteBuffer &bytes);

    /// The files in their order.
    const QList<Part> &parts() const { return parts_; }
    QList<qint64> lengths() const;

    /// Says of each file which of the parts that \a lanes make it is, and its checksum;
    /// \a checksums are in the order of the files, and none while they are not known.
    void showFacts(const Lanes &lanes, const QList<quint32> &checksums);

signals:
    /// The user wants to add a file.
    void addAsked();
    /// There are other files, or another order.
    void changed();

private:
    void remove();
    void move(int by);
    void showState();

    std::unique_ptr<Ui::PartList> controls_;
    QList<Part> parts_;
};

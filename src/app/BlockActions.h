// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "blocks/PasteReading.h"
#include "control/EditOffers.h"
#include "image/BlockChange.h"
#include "image/PastedText.h"

#include <QObject>
#include <QPointer>

#include <optional>

class ActionGate;
class AppDelegate;
class FillWindow;
class GridView;
class InsertFileWindow;
class MainWindow;
class Messages;
class QAction;
class UserFiles;
struct WindowMenus;

/// What changes many bytes of the data to burn at once: filling, pasting, inserting a file. It is
/// about the bytes that are selected in the grid, and says what it has changed, or why it has not.
class BlockActions final : public QObject {
    Q_OBJECT

public:
    /// What it works with; all must outlive it.
    struct Surroundings {
        MainWindow &window;
        AppDelegate &delegate;
        UserFiles &files;
        const ActionGate &gate;
        Messages &messages;
    };

    BlockActions(const Surroundings &surroundings, QObject *parent);

    /// Adds its entries to the edit menu, as ones that are off while the tool runs.
    void addEntries(WindowMenus &menus);

    // Each is refused while the tool works and where the grid does not show the data to burn.

    /// Fills the selected bytes with 00.
    void writeZeros();
    /// Asks what to fill, and with what.
    void fill();
    /// Asks for a file, and where it goes.
    void insertFile();
    /// Overwrites the bytes from the first selected one on with the clipboard's text, taken \a as
    /// bytes or as characters.
    void paste(PastedText::As as);

private:
    QAction *addEntry(WindowMenus &menus, const QString &text, const QString &toolTip,
                      void (BlockActions::*action)());
    void pasteBytes() { paste(PastedText::As::Bytes); }
    void pasteCharacters() { paste(PastedText::As::Characters); }
    GridView &grid() const;
    qint64 imageSize() const;
    /// Where bytes come in: at the first that is selected, or just behind the last one if the
    /// cursor is there; nothing elsewhere.
    std::optional<qint64> placeForBytes() const;
    /// True, and said, if nothing may change here. What is being typed is committed first, unless
    /// the tool runs.
    bool refusesElseCommits();
    bool refusesUnless(const Result<void, QString> &allowed);
    Result<void, QString> mayChangeHere() const;
    bool change(const EditOffers::Block &block);

    void showFillWindow();
    void fillBytes(ByteRange where, const BlockContent &content);
    void loadFile(const QString &path);
    void insert(const BlockChange &change);

    /// What is being pasted.
    struct Paste {
        QString text;
        PastedText::As as = PastedText::As::Bytes;
        qint64 offset = 0;
        quint64 revision = 0; ///< of the image that it is meant for
    };

    void read(const Paste &paste);
    void takeText(const PastedText &text);
    void forgetText();
    void sayNoMemory();
    bool refusesToPaste(quint64 revision);
    Result<void, QString> mayPaste(quint64 revision);
    void offerCharacters(const Paste &paste, const PasteTrouble &trouble);
    void offerLength(const Paste &paste, const QByteArray &bytes);
    void overwrite(qint64 offset, const QByteArray &bytes);

    const Surroundings with_;
    QPointer<FillWindow> fillWindow_;
    QPointer<InsertFileWindow> insertWindow_;
    PasteReading reading_;
    Paste paste_;
};

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"
#include "settings/IniFile.h"

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <chrono>
#include <functional>
#include <optional>

/// The user's settings: one INI file, plus registered defaults that are never written to it. A
/// value that the user has stored always wins over a registered default. Values are read at the
/// moment of use; nobody keeps a copy. Other programs, another window and people may write the
/// file as well; each change is made to what it holds at that moment.
///
/// What is stored comes back exactly as it was: an empty list stays an empty list, a list of one
/// a list, and commas, quotes, backslashes, percent signs and letters outside ASCII are kept.
class SettingsStore final : public QObject {
    Q_OBJECT

public:
    /// How long a change waits for another program and for the disk, which may follow.
    static constexpr std::chrono::milliseconds patience{60};

    /// Opens (or, at the first write, creates) the INI file at the absolute \a filePath. With a
    /// file that cannot be read or is no INI text the store starts empty, as unreadFile() tells.
    /// The file is not changed yet: it may be in use by another process, which this one then only
    /// asks to show its window.
    explicit SettingsStore(const QString &filePath, QObject *parent = nullptr);
    ~SettingsStore() override;

    /// The file is this process's to look after from now on: it is read anew, and moved aside if it
    /// is no INI text. One that cannot be read stays as it is.
    void claimFile();

    /// Adds \a defaults (key to value) to the registered defaults. Values already stored by the
    /// user are untouched. Emits valueChanged() for each key whose visible value changed.
    void registerDefaults(const QVariantMap &defaults);

    /// Stores \a value (a bool, a QString or a QStringList) under \a key and emits valueChanged()
    /// before returning if the visible value changed. Waits for others, the disk among
    /// them, for patience at most; a disk that needs longer follows. A failure to write the file
    /// keeps the value for this run and is reported through problem(); it is tried again with the
    /// next change and at the end. What the disk refuses later is reported and tried again in the
    /// same way. False, with nothing changed and changeRefused() emitted, while values may not
    /// change.
    bool setValue(const QString &key, const QVariant &value);
    /// The same for all of \a values (key to value) at once: one act of the user waits only once,
    /// and no end of the program comes between two of them.
    bool setValues(const QVariantMap &values);

    /// Lets \a mayChange say at each setValue() whether values may change now; without it they
    /// always may. It must be callable until it is replaced.
    void setGuard(std::function<bool()> mayChange);
    /// True unless the guard refuses every change now.
    bool mayChange() const;

    /// The user's value as a text, else the registered default, else a null string. A value in the
    /// file that cannot be read as the type asked for counts as absent, here and below.
    QString stringValue(const QString &key) const;
    /// The same as a boolean; an absent key reads as false.
    bool boolValue(const QString &key) const;
    /// The same as a list; an absent key reads as an empty list.
    QStringList stringListValue(const QString &key) const;

    /// Absolute path of the settings file, which need not exist.
    QString filePath() const;
    /// A file without whose content the store was opened.
    struct UnreadFile {
        /// Why, for the message line; translated.
        QString sentence;
        /// Where it was moved; nothing if it is still in its place.
        std::optional<QString> movedTo = std::nullopt;
    };
    /// The file that was there when the store was opened and could not be used; nothing if it
    /// could, or if it was left in its place and has been written since.
    const std::optional<UnreadFile> &unreadFile() const { return unreadFile_; }

signals:
    /// A change of \a key was refused: whoever shows the key shows its value again.
    void changeRefused(const QString &key);
    /// setValue() has stored a value under \a key, which may be the same as before.
    void valueSet(const QString &key);
    /// The visible value of \a key changed: by setValue(), by registerDefaults(), or because
    /// another program had written the file when setValue() came to write it.
    void valueChanged(const QString &key);
    /// The settings file could not be written, or the disk has refused it later (emitted once,
    /// until a write has worked again); \a sentence says why, for the message line.
    void problem(const QString &sentence);
    /// The settings file had become unreadable and was moved aside; \a sentence says where to.
    void keptAside(const QString &sentence);
    /// Everything that could not be written is in the file now; and where the file could not be
    /// read at first, what is in it holds.
    void savingWorksAgain();

private:
    enum class Saving { Works, Failed };

    /// A key's value in the two forms that together tell whether it has changed; a null text is an
    /// absent value.
    struct VisibleValue {
        QString text;
        QStringList list;

        friend bool operator==(const VisibleValue &a, const VisibleValue &b) {
            return a.text == b.text && a.text.isNull() == b.text.isNull() && a.list == b.list;
        }
    };

    void open();
    UnreadFile withoutDamagedFile() const;
    bool isStored(const QString &key) const;
    QVariant storedVariant(const QString &key) const;
    void save();
    void takeBackUnconfirmed();
    void tellOf(const Result<void> &saved);
    Result<void> trySaving();
    Result<void> keepDamagedFileAside();
    void saveStoredAnew();
    QMap<QString, VisibleValue> visibleValues() const;
    void announceChanges();

    IniFile file_;
    std::optional<UnreadFile> unreadFile_;
    QVariantMap stored_;      ///< what the file held when it was last read
    QVariantMap unsaved_;     ///< what is to be in it, too
    QVariantMap unconfirmed_; ///< what it was given, and the disk may still refuse
    QVariantMap defaults_;
    QMap<QString, VisibleValue> announced_;
    std::function<bool()> mayChange_;
    Saving saving_ = Saving::Works;
};

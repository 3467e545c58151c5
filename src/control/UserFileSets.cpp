// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

// Several files that the user saves under one name.

#include "control/UserFiles.h"

#include "control/ActionGate.h"
#include "control/Messages.h"
#include "files/FreeName.h"
#include "language/Sentences.h"
#include "settings/FilePaths.h"
#include "settings/WindowMemory.h"

#include <QDir>
#include <QFileInfo>

#include <functional>
#include <tuple>

namespace {

QString nameOfSet(const QString &path, const QString &ending) {
    return path.endsWith(ending, Qt::CaseInsensitive) ? path.chopped(ending.size()) : path;
}

QList<FileToSave> filesOf(const QString &name, const UserFiles::Set &set) {
    QList<FileToSave> files;
    for (const UserFiles::Set::Part &part : set.parts)
        files.append({name + part.ending, part.bytes});
    return files;
}

Result<QStringList, UnsavedTogether> existing(const QString &name, const QStringList &endings) {
    QStringList paths;
    for (const QString &ending : endings) {
        const Result<bool> isThere = isNameTaken(name + ending);
        if (const Failure *failure = isThere.failure())
            return UnsavedTogether{name + ending, *failure, {}};
        if (*isThere)
            paths << name + ending;
    }
    return paths;
}

QString fileName(const QString &path) {
    return QFileInfo(path).fileName();
}

QString fileNames(const QStringList &paths) {
    QStringList names;
    for (const QString &path : paths)
        names << fileName(path);
    return names.join(QStringLiteral(", "));
}

QString folderOf(const QString &path) {
    return QDir::toNativeSeparators(QFileInfo(path).path());
}

QStringList pathsOf(const QList<FileToSave> &files) {
    QStringList paths;
    for (const FileToSave &file : files)
        paths << file.path;
    return paths;
}

/// The sentence that all of \a paths, in one folder, were written.
QString savedSentence(const QStringList &paths) {
    return UserFiles::tr("Saved in %1: %2.").arg(folderOf(paths.first()), fileNames(paths));
}

/// What to say of files called \a name that are not of the set of that name: those with \a endings.
QString otherFileWords(const QString &name, const QStringList &endings) {
    QStringList there;
    QString words;
    for (const QString &ending : endings) {
        const auto found = existing(name, {ending});
        if (const UnsavedTogether *unknown = found.failure())
            words = joinedSentences(
                words,
                UserFiles::tr("It is not known whether %1, which is not of this set, is there: %2.")
                    .arg(fileName(unknown->path), unknown->failure.reason));
        else
            there << *found;
    }
    if (there.isEmpty())
        return words;
    return joinedSentences(
        UserFiles::tr("Not of this set, but there already: %1.").arg(fileNames(there)), words);
}

} // namespace

void UserFiles::saveSet(QWidget *window, const Set &set) {
    if (gate_.refuses())
        return;
    messages_.happened(Event::SavingBegan);
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Save;
    request.title = set.title;
    request.suggestedName = set.suggestedName;
    request.typeName = set.typeName;
    const QString ending = set.parts.first().ending;
    request.extensions = {ending.sliced(1)};
    ask(window, PanelPurpose::Save, request, [this, set, ending](const QString &path) {
        set.named();
        writeSet(nameOfSet(path, ending), set, {path});
    });
}

// A file that has come since the user was asked is asked about as well.
void UserFiles::writeSet(const QString &name, const Set &set, const QStringList &replaceable) {
    QStringList endings;
    for (const Set::Part &part : set.parts)
        endings << part.ending;
    const Result<QStringList, UnsavedTogether> there = existing(name, endings);
    if (const UnsavedTogether *unknown = there.failure())
        return failed(unknown->path, wordsFor(*unknown));
    QStringList asked = *there;
    for (const QString &path : replaceable)
        asked.removeAll(path);
    if (!asked.isEmpty())
        return messages_.say(
            Topic::TakenNames,
            tr("Nothing was saved yet. Already in %1: %2.").arg(folderOf(name), fileNames(asked)),
            {tr("Replace"), [this, name, set, replaced = *there] {
                 if (gate_.refuses())
                     return;
                 messages_.happened(Event::SavingBegan);
                 writeSet(name, set, replaced);
             }});
    std::ignore = saveTogether(filesOf(name, set), Replacing::Allowed,
                               otherFileWords(name, set.absentEndings));
}

void UserFiles::chooseNames(QWidget *window, const QString &path,
                            const std::function<void(const QString &)> &chosen) {
    const QFileInfo file(path);
    FilePanelRequest request;
    request.kind = FilePanelRequest::Kind::Save;
    request.title = tr("Name of the files");
    request.suggestedName = file.isAbsolute() ? path : file.fileName();
    request.isWholeName = false;
    ask(window, PanelPurpose::Save, request, chosen);
}

QString UserFiles::wordsFor(const UnsavedTogether &unsaved) {
    const QString sentence = tr("Nothing was saved, since %1 could not be written: %2.")
                                 .arg(unsaved.path, unsaved.failure.reason);
    if (unsaved.notTakenBack.isEmpty())
        return sentence;
    QStringList left;
    for (const NotTakenBack &file : unsaved.notTakenBack)
        left << (file.olderPath.isEmpty()
                     ? fileName(file.path)
                     : tr("%1 (what it held is now in %2)")
                           .arg(fileName(file.path), fileName(file.olderPath)));
    return tr("%1 could not be written: %2. These hold their new bytes all the same: %3.")
        .arg(unsaved.path, unsaved.failure.reason, left.join(QStringLiteral(", ")));
}

Result<void, UnsavedTogether> UserFiles::saveTogether(const QList<FileToSave> &files,
                                                      Replacing replacing, const QString &facts,
                                                      const Messages::Action &action) {
    const Result<void, UnsavedTogether> saved = ::saveTogether(files, replacing);
    if (const UnsavedTogether *unsaved = saved.failure()) {
        failed(unsaved->path, wordsFor(*unsaved));
        return saved;
    }
    const QStringList paths = pathsOf(files);
    memory_.setLastFolder(PanelPurpose::Save, QFileInfo(paths.first()).path());
    messages_.say(Topic::Saving, joinedSentences(savedSentence(paths), facts), action);
    return saved;
}

QString UserFiles::folderForSaving() const {
    const QString folder = memory_.lastFolder(PanelPurpose::Save);
    return folder.isEmpty() ? homeFolder() : folder;
}

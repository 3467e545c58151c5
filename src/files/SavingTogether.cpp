// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "files/SavingTogether.h"

#include "files/DiskFlush.h"
#include "files/FileSaving.h"
#include "files/UnfinishedFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <utility>
#include <vector>

namespace {

using Unfinished = std::vector<UnfinishedFile>;

bool hasPlaceOf(const Unfinished &files, const UnfinishedFile &other) {
    return std::any_of(files.begin(), files.end(), [&other](const UnfinishedFile &file) {
        return file.path() == other.path();
    });
}

/// The files before number \a end give their places back, the last one first. Gives those that
/// could not.
QList<NotTakenBack> takeBack(Unfinished &places, qsizetype end, const QList<FileToSave> &files) {
    QList<NotTakenBack> left;
    for (qsizetype i = end - 1; i >= 0; --i) {
        UnfinishedFile &place = places[size_t(i)];
        if (!place.giveBackPlace())
            left.prepend({files.at(i).path, QFile::decodeName(place.keptName())});
    }
    return left;
}

/// A folder in which files are saved.
struct OpenedFolder {
    QByteArray name;
    QString firstPath; ///< of those files
    FileDescriptor opened;
};

using Folders = std::vector<OpenedFolder>;

/// Each folder of \a places once.
Result<Folders, UnsavedTogether> foldersOf(const Unfinished &places,
                                           const QList<FileToSave> &files) {
    Folders folders;
    for (qsizetype i = 0; i < files.size(); ++i) {
        const QByteArray name = places[size_t(i)].folder();
        const bool isKnown =
            std::any_of(folders.begin(), folders.end(),
                        [&name](const OpenedFolder &folder) { return folder.name == name; });
        if (isKnown)
            continue;
        Result<FileDescriptor> opened = openFolder(name);
        if (const Failure *failure = opened.failure())
            return UnsavedTogether{files.at(i).path, *failure, {}};
        folders.push_back({name, files.at(i).path, *std::move(opened)});
    }
    return folders;
}

Result<Unfinished, UnsavedTogether> writeAllBeside(const QList<FileToSave> &files) {
    Unfinished places;
    for (const FileToSave &file : files) {
        Result<UnfinishedFile> written =
            unfinishedFile(file.path, file.bytes, Durability::PowerFailure);
        if (const Failure *failure = written.failure())
            return UnsavedTogether{file.path, *failure, {}};
        if (hasPlaceOf(places, *written))
            return UnsavedTogether{file.path, Failure::ofSystem(EEXIST), {}};
        places.push_back(*std::move(written));
    }
    return places;
}

} // namespace

Result<void, UnsavedTogether> saveTogether(const QList<FileToSave> &files, Replacing replacing) {
    Result<Unfinished, UnsavedTogether> places = writeAllBeside(files);
    if (const UnsavedTogether *unsaved = places.failure())
        return *unsaved;
    const Result<Folders, UnsavedTogether> folders = foldersOf(*places, files);
    if (const UnsavedTogether *unsaved = folders.failure())
        return *unsaved;
    for (qsizetype i = 0; i < files.size(); ++i) {
        const Result<void> taken = (*places)[size_t(i)].takePlaceForNow(replacing);
        if (const Failure *failure = taken.failure())
            return UnsavedTogether{files.at(i).path, *failure, takeBack(*places, i, files)};
    }
    for (const OpenedFolder &folder : *folders) {
        const Result<void> flushed = flushFolder(folder.opened);
        if (const Failure *failure = flushed.failure())
            return UnsavedTogether{folder.firstPath, *failure,
                                   takeBack(*places, files.size(), files)};
    }
    return {};
}

#pragma once

#include <QByteArrayView>
#include <QString>

/// True if \a content can be read as a settings file line by line without losing anything: UTF-8
/// text without control characters, each line blank, a comment, a section or "key=value". Stricter
/// than the INI reader, which takes what it understands and drops the rest at its next write.
bool isReadableIni(QByteArrayView content);

/// True if something stands at \a path that is no readable settings file: a folder, a device, a
/// file that may not be read or is larger than any settings file, or one that isReadableIni()
/// rejects. Nothing at all at \a path is fine. Never blocks on a FIFO.
bool isDamagedSettingsFile(const QString &path);

/// Renames what stands at \a path to the first unused name of "<path>.damaged",
/// "<path>.damaged-2", … and returns that name; an empty string if it could not be moved.
QString moveAside(const QString &path);

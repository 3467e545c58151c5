#include "settings/IniCheck.h"

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr qint64 largestSettingsFile = qint64(1) << 20;
constexpr int mostCopies = 1000;
constexpr char firstPrintable = 0x20;

bool isControlCharacter(char c) {
    const bool allowed = c == '\t' || c == '\n' || c == '\r';
    return c >= 0 && c < firstPrintable && !allowed;
}

// An open quote or a backslash at the end would make the reader swallow the next line.
bool isComplete(const QByteArray &line) {
    bool quoted = false;
    bool escaped = false;
    for (const char c : line) {
        if (escaped)
            escaped = false;
        else if (c == '\\')
            escaped = true;
        else if (c == '"')
            quoted = !quoted;
    }
    return !quoted && !escaped;
}

bool isReadableLine(const QByteArray &raw) {
    const QByteArray line = raw.trimmed();
    if (line.isEmpty() || line.startsWith(';') || line.startsWith('#'))
        return true;
    if (line.startsWith('['))
        return line.endsWith(']');
    return line.indexOf('=') > 0 && isComplete(line);
}

// The program itself never writes these two; they carry serialised objects that a damaged length
// field turns into an allocation of any size.
bool holdsSerialisedObject(const QByteArray &content) {
    return content.contains("@Variant(") || content.contains("@DateTime(");
}

} // namespace

bool isReadableIni(QByteArrayView content) {
    if (!content.isValidUtf8() || std::any_of(content.begin(), content.end(), isControlCharacter))
        return false;
    QByteArray text = content.toByteArray();
    if (text.startsWith("\xef\xbb\xbf"))
        text.remove(0, 3);
    text.replace('\r', '\n');
    const QList<QByteArray> lines = text.split('\n');
    return !holdsSerialisedObject(text) && std::all_of(lines.begin(), lines.end(), isReadableLine);
}

bool isDamagedSettingsFile(const QString &path) {
    const QFileInfo info(path);
    if (!info.exists())
        return false;
    if (!info.isFile() || info.size() > largestSettingsFile)
        return true;
    QFile file(path);
    return !file.open(QIODevice::ReadOnly) || !isReadableIni(file.read(largestSettingsFile));
}

QString moveAside(const QString &path) {
    const QString first = path + QStringLiteral(".damaged");
    for (int copy = 1; copy <= mostCopies; ++copy) {
        const QString name = copy == 1 ? first : first + u'-' + QString::number(copy);
        if (QFileInfo::exists(name))
            continue;
        if (QFile::rename(path, name))
            return name;
        // Nobody else took the name meanwhile, so no other name will do either.
        if (!QFileInfo::exists(name) && !QFileInfo(name).isSymLink())
            return {};
    }
    return {};
}

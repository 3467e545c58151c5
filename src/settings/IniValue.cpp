// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#include "settings/IniValue.h"

#include "base/Digits.h"

#include <QStringDecoder>
#include <QStringList>

#include <algorithm>

namespace {

constexpr char16_t firstPrintable = 0x20;
constexpr char16_t deleteCharacter = 0x7f;
constexpr char16_t byteOrderMark = 0xfeff;

const QString byteArrayCall = QStringLiteral("@ByteArray(");
const QString stringCall = QStringLiteral("@String(");

bool isBlank(QChar c) {
    return c == u' ' || c == u'\t';
}

/// Takes apart what is spelled: at bare commas, without quotes, with escapes resolved.
class PartReader {
public:
    explicit PartReader(QByteArrayView characters) : rest_(characters) {}

    /// One part more than there are bare commas.
    QStringList parts() {
        skipBlanks();
        while (!rest_.isEmpty())
            readNext();
        endPart();
        return parts_;
    }

private:
    void readNext() {
        const char c = rest_.front();
        if (c == '\\') {
            readEscape();
            keptSize_ = part_.size();
        } else if (c == '"') {
            take();
            isQuoted_ = true;
            isOpen_ = !isOpen_;
            if (!isOpen_)
                skipBlanks();
        } else if (c == ',' && !isOpen_) {
            take();
            endPart();
            skipBlanks();
        } else {
            readPlain();
        }
    }

    char take() {
        const char c = rest_.front();
        rest_ = rest_.sliced(1);
        return c;
    }

    void skipBlanks() {
        while (!rest_.isEmpty() && isBlank(QLatin1Char(rest_.front())))
            take();
    }

    void readPlain() {
        const auto special = [](char c) { return c == '\\' || c == '"' || c == ','; };
        const auto end = std::find_if(rest_.begin() + 1, rest_.end(), special);
        const qsizetype size = end - rest_.begin();
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
        part_ += QString(decoder(rest_.first(size)));
        rest_ = rest_.sliced(size);
    }

    void readEscape() {
        static constexpr QByteArrayView names("abfnrtv\"?'\\");
        static constexpr QByteArrayView characters("\a\b\f\n\r\t\v\"?'\\");
        take();
        if (rest_.isEmpty())
            return;
        if (beginsWithDigit(octal))
            return readNumber(octal);
        const char c = take();
        if (c == 'x' && beginsWithDigit(hexadecimal))
            return readNumber(hexadecimal);
        if (const qsizetype code = names.indexOf(c); code >= 0)
            part_ += QLatin1Char(characters.at(code));
    }

    bool beginsWithDigit(int base) const {
        return !rest_.isEmpty() && digitValue(QLatin1Char(rest_.front()), base);
    }

    void readNumber(int base) {
        char16_t unit = 0;
        while (beginsWithDigit(base))
            unit = char16_t(unit * base + *digitValue(QLatin1Char(take()), base));
        part_ += QChar(unit);
    }

    void endPart() {
        while (!isQuoted_ && part_.size() > keptSize_ && isBlank(part_.back()))
            part_.chop(1);
        parts_.append(part_);
        part_.clear();
        keptSize_ = 0;
        isQuoted_ = false;
    }

    QByteArrayView rest_;
    QStringList parts_;
    QString part_;
    qsizetype keptSize_ = 0; ///< what was escaped is no trailing blank
    bool isQuoted_ = false;  ///< nor is what is in quotes
    bool isOpen_ = false;
};

QString inside(const QString &call, const QString &name) {
    return call.sliced(name.size()).chopped(1);
}

bool isObject(const QString &part) {
    static const QStringList objects = {QStringLiteral("@Invalid("),  QStringLiteral("@Variant("),
                                        QStringLiteral("@DateTime("), QStringLiteral("@Rect("),
                                        QStringLiteral("@Size("),     QStringLiteral("@Point(")};
    return std::any_of(objects.begin(), objects.end(),
                       [&](const QString &object) { return part.startsWith(object); });
}

/// What one part stands for: a leading at sign makes it a call, two make it a text.
QVariant meaningOf(const QString &part) {
    if (part.startsWith(u"@@"))
        return part.sliced(1);
    if (!part.startsWith(u'@') || !part.endsWith(u')'))
        return part;
    if (part.startsWith(byteArrayCall))
        return inside(part, byteArrayCall).toLatin1();
    if (part.startsWith(stringCall))
        return inside(part, stringCall);
    return isObject(part) ? QVariant() : QVariant(part);
}

/// A byte-order mark is one, too: not all readers take it for a letter.
bool isControl(QChar c) {
    return c.unicode() < firstPrintable || c == deleteCharacter || c == byteOrderMark;
}

bool isHalfOfAPair(QStringView text, qsizetype at) {
    const QChar c = text.at(at);
    if (c.isHighSurrogate())
        return at + 1 == text.size() || !text.at(at + 1).isLowSurrogate();
    return c.isLowSurrogate() && (at == 0 || !text.at(at - 1).isHighSurrogate());
}

/// The escape for the one character; empty if it needs none.
QString shortEscape(QChar c) {
    switch (c.unicode()) {
    case u'\\':
        return QStringLiteral("\\\\");
    case u'"':
        return QStringLiteral("\\\"");
    case u'\n':
        return QStringLiteral("\\n");
    case u'\r':
        return QStringLiteral("\\r");
    case u'\t':
        return QStringLiteral("\\t");
    default:
        return {};
    }
}

QString escaped(const QString &text) {
    QString line;
    bool digitWouldJoin = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        const QString escape = shortEscape(c);
        const bool needsNumber =
            escape.isEmpty() && (isControl(c) || isHalfOfAPair(text, i) ||
                                 (digitWouldJoin && digitValue(c, hexadecimal)));
        if (needsNumber)
            line += QStringLiteral("\\x") + QString::number(c.unicode(), hexadecimal);
        else
            line += escape.isEmpty() ? QString(c) : escape;
        digitWouldJoin = needsNumber;
    }
    return line;
}

QString spelled(const QString &text) {
    static const QString separators = QStringLiteral(";,=");
    const QString line = escaped(text);
    const bool needsQuotes =
        line.startsWith(u' ') || line.endsWith(u' ') ||
        std::any_of(line.begin(), line.end(), [](QChar c) { return separators.contains(c); });
    return needsQuotes ? u'"' + line + u'"' : line;
}

QString spelledText(const QString &text) {
    return spelled(text.startsWith(u'@') ? u'@' + text : text);
}

} // namespace

namespace iniValue {

QByteArray encoded(const QVariant &value) {
    if (value.typeId() == QMetaType::QByteArray)
        return spelled(byteArrayCall + QString::fromLatin1(value.toByteArray()) + u')').toUtf8();
    if (value.typeId() != QMetaType::QStringList)
        return spelledText(value.toString()).toUtf8();
    QStringList entries = value.toStringList();
    std::transform(entries.begin(), entries.end(), entries.begin(), spelledText);
    return entries.join(u", ").toUtf8();
}

QVariant decoded(QByteArrayView characters) {
    const QStringList parts = PartReader(characters).parts();
    if (parts.size() == 1)
        return meaningOf(parts.constFirst());
    QStringList entries;
    for (const QString &part : parts)
        entries.append(meaningOf(part).toString());
    return entries;
}

} // namespace iniValue

// SPDX-FileCopyrightText: 2026 The VELM authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// Why a text was not understood as bytes, and where.
struct PasteTrouble {
    enum class Kind {
        NoBytes,     ///< it stands for none
        NoDigit,     ///< something that is no hexadecimal digit
        OddDigit,    ///< a group of hexadecimal digits of an odd number
        NoValue,     ///< in an array or a literal, something that is no byte
        NoEnd,       ///< an array or a literal is not closed
        BehindEnd,   ///< something behind an array
        NoRow,       ///< among rows of a grid, a line that is none
        RowsApart,   ///< a row that does not follow the one before
        NoCharacter, ///< a character that takes more than a byte
        TooMany,     ///< more bytes than the largest image has
    };
    Kind kind = Kind::NoBytes;
    qint64 line = 1;   ///< from 1 on
    qint64 column = 1; ///< in UTF-16 units, from 1 on
    QString part;      ///< the beginning of what was not understood, without line ends
};

/// Reads a text that somebody copied as bytes, in as many turns as the caller likes. It is taken
/// for what it begins as:
/// - hexadecimal digits of either case in groups of even length, with white space or commas between
///   them; behind "0x" a single digit does, too;
/// - an array of C: "= {", then numbers from 0 to 255, hexadecimal behind "0x" and else decimal;
/// - a bytes literal of Python, such as b'\x00ab', or several one after the other;
/// - rows of this program's grid: address, sixteen bytes, characters.
class PastedText {
public:
    enum class As {
        Bytes,
        Characters, ///< each is one byte, after Latin-1
    };

    explicit PastedText(QString text, As as = As::Bytes);

    /// Reads on, about \a max UTF-16 units of the text. True once all has been read, or there was
    /// trouble.
    bool advance(qsizetype max);
    /// How many units have been read.
    qsizetype position() const { return at_; }
    qsizetype size() const { return text_.size(); }

    /// All bytes that it stands for, or why it was not understood; once advance() has said so.
    Result<QByteArray, PasteTrouble> result() const;

private:
    using Kind = PasteTrouble::Kind;
    enum class Form { Hex, Array, Literal, Rows, Characters };
    enum class Place { Outside, Inside, LineComment, BlockComment };

    void recognise();
    void takeOne();
    void takeCharacter();
    void takeHex();
    void endGroup();
    void takeArray();
    bool takeComment();
    void takeNumber();
    void takeArrayEnd();
    void takeLiteral();
    void takeLiteralCharacter();
    void takeEscape();
    void takeRow();
    bool takeRowBytes(QStringView cells);
    void finish();

    QStringView rest() const { return QStringView(text_).sliced(at_); }
    void pass(qsizetype units);
    void append(int byte) { bytes_.append(char(byte)); }
    void fail(Kind kind);

    QString text_;
    Form form_;
    Place place_ = Place::Outside;
    qsizetype at_ = 0;
    qsizetype lineStart_ = 0;
    qint64 line_ = 1;
    QChar quote_;                    ///< that closes the literal
    qsizetype group_ = -1;           ///< where the group of digits began; below 0 between groups
    qsizetype digits_ = 0;           ///< of the group
    bool prefixed_ = false;          ///< the group begins with "0x"
    int half_ = 0;                   ///< the first digit of a byte
    std::optional<quint64> address_; ///< of the next row
    bool rowsEnded_ = false;         ///< there was a place without a byte
    QByteArray bytes_;
    std::optional<PasteTrouble> trouble_;
    bool done_ = false;
};

// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilIniReader.h"

#include <optional>

namespace {

constexpr std::size_t c_iNone = std::string_view::npos;

bool IsBlank(char ch)
{
    return ch == ' ' || ch == '\t';
}

bool IsLineEnd(char ch)
{
    return ch == '\n' || ch == '\r';
}

/// Where what stands at iPos, or later, and is none of these begins.
template <typename Predicate>
std::size_t Skip(std::string_view text, std::size_t iPos, Predicate isOne)
{
    while (iPos < text.size() && isOne(text[iPos])) {
        ++iPos;
    }
    return iPos;
}

/// The second byte of "\r\n" or "\n\r".
bool IsPairedLineEnd(char chFirst, char chSecond)
{
    return IsLineEnd(chFirst) && IsLineEnd(chSecond) && chFirst != chSecond;
}

std::string_view Trimmed(std::string_view text)
{
    const auto isSpace = [](char ch) { return IsBlank(ch) || (ch >= '\n' && ch <= '\r'); };
    text.remove_prefix(Skip(text, 0, isSpace));
    while (!text.empty() && isSpace(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

QString FromUtf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/// A name of a group or a key: "%" with two hexadecimal digits or "%U" with four is a character, "\" is "/".
QString Name(std::string_view rawName)
{
    const QString strRaw = FromUtf8(rawName);
    QString strName;
    for (int i = 0; i < strRaw.size(); ++i) {
        if (strRaw.at(i) != QLatin1Char('%')) {
            strName += strRaw.at(i) == QLatin1Char('\\') ? QLatin1Char('/') : strRaw.at(i);
            continue;
        }
        const bool bWide = strRaw.mid(i + 1, 1) == QLatin1String("U");
        const QString strDigits = bWide ? strRaw.mid(i + 2, 4) : strRaw.mid(i + 1, 2);
        bool bCode = false;
        const ushort iCode = strDigits.toUShort(&bCode, 16);
        if (bCode && strDigits.size() == (bWide ? 4 : 2)) {
            strName += QChar(iCode);
            i += bWide ? 5 : 2;
        } else {
            strName += QLatin1Char('%');
        }
    }
    return strName;
}

/// The value of a digit; -1 for none of that base.
int Digit(char ch, int iBase)
{
    const int iDigit = ch >= '0' && ch <= '9'   ? ch - '0'
                       : ch >= 'a' && ch <= 'f' ? ch - 'a' + 10
                       : ch >= 'A' && ch <= 'F' ? ch - 'A' + 10
                                                : iBase;
    return iDigit < iBase ? iDigit : -1;
}

/// What a text stands for that begins with "@", by which QSettings marks what is not plain text.
QString Unmarked(const QString& strText)
{
    const auto inside = [&strText](const char* pMark) {
        const QLatin1String mark(pMark);
        const bool bMarked = strText.startsWith(mark) && strText.endsWith(QLatin1Char(')'));
        return bMarked ? std::optional(strText.mid(mark.size()).chopped(1)) : std::nullopt;
    };
    if (const auto text = inside("@String(")) {
        return *text;
    }
    if (const auto bytes = inside("@ByteArray(")) {
        return QString::fromUtf8(bytes->toLatin1());
    }
    if (strText == QLatin1String("@Invalid()")) {
        return QString();
    }
    return strText.startsWith(QLatin1String("@@")) ? strText.mid(1) : strText;
}

/// Puts together what a raw value means, one piece between unquoted commas after the other.
class ValueReader
{
public:
    explicit ValueReader(std::string_view rawValue) : m_raw(rawValue) {}

    QString Text()
    {
        SkipBlanks();
        while (m_iPos < m_raw.size()) {
            TakeNext();
        }
        EndPiece();
        return m_strText;
    }

private:
    void SkipBlanks() { m_iPos = Skip(m_raw, m_iPos, IsBlank); }

    void TakeNext()
    {
        const char ch = m_raw[m_iPos];
        if (ch == '\\') {
            ++m_iPos;
            TakeEscape();
            m_iKept = m_strPiece.size(); // blanks before an escape are not at the end
        } else if (ch == '"') {
            ++m_iPos;
            m_bWasQuoted = true;
            m_bInQuotes = !m_bInQuotes;
            if (!m_bInQuotes) {
                SkipBlanks();
                m_iKept = m_strPiece.size();
            }
        } else if (ch == ',' && !m_bInQuotes) {
            ++m_iPos;
            EndPiece();
            m_strText += QLatin1Char(',');
            SkipBlanks();
        } else {
            const std::size_t iEnd = m_raw.find_first_of("\\\",", m_iPos + 1);
            m_strPiece += FromUtf8(m_raw.substr(m_iPos, iEnd == c_iNone ? c_iNone : iEnd - m_iPos));
            m_iPos = qMin(iEnd, m_raw.size());
        }
    }

    void TakeEscape()
    {
        static constexpr std::string_view c_codes = "abfnrtv\"?'\\";
        static constexpr std::string_view c_meanings = "\a\b\f\n\r\t\v\"?'\\";
        if (m_iPos == m_raw.size()) {
            return;
        }
        const char ch = m_raw[m_iPos];
        const std::size_t iCode = c_codes.find(ch);
        if (iCode != c_iNone) {
            ++m_iPos;
            m_strPiece += QLatin1Char(c_meanings[iCode]);
        } else if (ch == 'x') {
            ++m_iPos;
            TakeNumber(16);
        } else if (Digit(ch, 8) >= 0) {
            TakeNumber(8);
        } else { // a line that goes on, or an unknown escape
            ++m_iPos;
            if (m_iPos < m_raw.size() && IsPairedLineEnd(ch, m_raw[m_iPos])) {
                ++m_iPos;
            }
        }
    }

    void TakeNumber(int iBase)
    {
        const std::size_t iBegin = m_iPos;
        unsigned iCode = 0;
        for (; m_iPos < m_raw.size() && Digit(m_raw[m_iPos], iBase) >= 0; ++m_iPos) {
            iCode =
                (iCode * static_cast<unsigned>(iBase) + static_cast<unsigned>(Digit(m_raw[m_iPos], iBase))) & 0xFFFF;
        }
        if (m_iPos > iBegin) {
            m_strPiece += QChar(static_cast<ushort>(iCode));
        }
    }

    void EndPiece()
    {
        while (!m_bWasQuoted && m_strPiece.size() > m_iKept &&
               (m_strPiece.endsWith(QLatin1Char(' ')) || m_strPiece.endsWith(QLatin1Char('\t')))) {
            m_strPiece.chop(1);
        }
        m_strText += Unmarked(m_strPiece);
        m_strPiece.clear();
        m_iKept = 0;
        m_bWasQuoted = false;
    }

    const std::string_view m_raw;
    std::size_t m_iPos = 0;
    QString m_strText;
    QString m_strPiece;
    decltype(m_strPiece.size()) m_iKept = 0; // so many characters of the piece are not blanks at its end
    bool m_bInQuotes = false;
    bool m_bWasQuoted = false;
};

} // namespace

UtilIniReader::UtilIniReader(std::string_view text) : m_rest(text)
{
    constexpr std::string_view c_byteOrderMark = "\xEF\xBB\xBF";
    if (text.substr(0, c_byteOrderMark.size()) == c_byteOrderMark) {
        m_rest.remove_prefix(c_byteOrderMark.size());
    }
}

bool UtilIniReader::Next()
{
    std::size_t iEquals = 0;
    for (std::string_view line = NextLine(iEquals); !line.empty(); line = NextLine(iEquals)) {
        if (line.front() == '[') {
            const std::size_t iEnd = line.find(']');
            m_strGroup = Name(Trimmed(line.substr(1, iEnd == c_iNone ? c_iNone : iEnd - 1)));
        } else if (iEquals != c_iNone) {
            std::string_view key = line.substr(0, iEquals);
            while (!key.empty() && IsBlank(key.back())) {
                key.remove_suffix(1);
            }
            m_strKey = Name(key);
            m_value = line.substr(iEquals + 1);
            return true;
        }
    }
    return false;
}

/// The next line that is neither empty nor a comment, from its first character to its end, and where its first unquoted
/// "=" is. A line ends before an unquoted ";", and goes on behind a line end that is quoted or stands behind a "\".
std::string_view UtilIniReader::NextLine(std::size_t& iEquals)
{
    const auto isSpace = [](char ch) { return IsBlank(ch) || IsLineEnd(ch); };
    iEquals = c_iNone;
    m_rest.remove_prefix(Skip(m_rest, 0, isSpace));
    while (!m_rest.empty() && m_rest.front() == ';') {
        m_rest.remove_prefix(Skip(m_rest, 0, [](char ch) { return !IsLineEnd(ch); }));
        m_rest.remove_prefix(Skip(m_rest, 0, isSpace));
    }
    bool bInQuotes = false;
    std::size_t i = 0;
    for (; i < m_rest.size(); ++i) {
        const char ch = m_rest[i];
        if (ch == '\\') {
            ++i;
            if (i + 1 < m_rest.size() && IsPairedLineEnd(m_rest[i], m_rest[i + 1])) {
                ++i;
            }
        } else if (ch == '"') {
            bInQuotes = !bInQuotes;
        } else if (!bInQuotes && (IsLineEnd(ch) || ch == ';')) {
            break;
        } else if (!bInQuotes && ch == '=' && iEquals == c_iNone) {
            iEquals = i;
        }
    }
    const std::string_view line = m_rest.substr(0, i);
    m_rest.remove_prefix(line.size());
    return line;
}

QString UtilIniReader::Text(std::string_view rawValue)
{
    return ValueReader(rawValue).Text();
}

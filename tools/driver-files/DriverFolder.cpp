// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DriverFolder.h"

#include "QtCompat.h"
#include "UtilFile.h"
#include "UtilIniReader.h"

#include <QDir>
#include <QRandomGenerator>

#include <cctype>
#include <cerrno>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString c_strWriterKey = u"Main/WrittenBy"_s; // of no meaning to the list's readers
constexpr int c_iMaxHead = 4096;                    // bytes of a list within which its writer stands

[[noreturn]] void FailToWrite(const QString& strPath, const QString& strReason, enExitStatus enStatus)
{
    throw ToolError(enStatus, u"cannot write %1: %2"_s.arg(strPath, strReason));
}

/// What stands there itself, not what it leads to.
bool Exists(const QString& strPath)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(strPath).constData(), &status) == 0;
}

bool IsPlainFile(const QString& strPath)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(strPath).constData(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_uid == ::geteuid();
}

/// A text as a value of an INI file: in quotes, so that neither a comma nor a semicolon ends it. Not by QSettings,
/// which loses characters of two halves with Qt 5.
QByteArray IniValue(const QString& strText)
{
    QString strValue = strText.startsWith(QLatin1Char('@')) ? u"@"_s : QString(); // one alone would mark a type
    bool bAfterCode = false; // whose digits a further one would join
    for (const QChar character : strText) {
        const bool bDigit = character.unicode() < 0x80 && std::isxdigit(character.unicode()) != 0;
        const bool bCode = character.category() == QChar::Other_Control || (bAfterCode && bDigit);
        if (bCode) {
            strValue += QString::asprintf("\\x%x", character.unicode());
        } else if (character == QLatin1Char('"') || character == QLatin1Char('\\')) {
            strValue += QLatin1Char('\\') + character;
        } else {
            strValue += character;
        }
        bAfterCode = bCode;
    }
    return '"' + strValue.toUtf8() + '"';
}

void Remove(const QString& strPath)
{
    QFile file(strPath);
    if (!file.remove() && Exists(strPath)) {
        throw ToolError(enExitIo, u"cannot remove %1: %2"_s.arg(strPath, file.errorString()));
    }
}

} // namespace

void ReplaceFile(const QString& strPath, const QByteArray& content, enExitStatus enFailure)
{
    const quint32 dwSuffix = QRandomGenerator::global()->generate();
    QFile file(u"%1.%2"_s.arg(strPath).arg(dwSuffix, 8, 16, QLatin1Char('0')));
    // With a buffer whose end finds no room the file could not even be removed.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
        FailToWrite(strPath, file.errorString(), enFailure);
    }
    if (file.write(content) != content.size()) {
        const QString strReason = file.errorString();
        file.remove();
        FailToWrite(strPath, strReason, enExitIo);
    }
    // QFile::rename replaces nothing.
    if (std::rename(QFile::encodeName(file.fileName()).constData(), QFile::encodeName(strPath).constData()) != 0) {
        const QString strReason = qt_error_string(errno);
        file.remove();
        FailToWrite(strPath, strReason, enFailure);
    }
}

DriverFolder::DriverFolder(const QString& strCfgPath, const QString& strWriter)
    : m_strCfgPath(QDir(strCfgPath).absolutePath()), m_strWriter(strWriter)
{
    QDir().mkpath(m_strCfgPath);
}

QString DriverFolder::ListPath() const
{
    return m_strCfgPath + QLatin1Char('/') + c_strPrinterListName;
}

QString DriverFolder::StatusPath(const QString& strName) const
{
    return m_strCfgPath + QLatin1Char('/') + strName + c_strStatusFileSuffix;
}

bool DriverFolder::HasStatus(const QString& strName) const
{
    return Exists(StatusPath(strName));
}

bool DriverFolder::HasPlainStatus(const QString& strName) const
{
    return IsPlainFile(StatusPath(strName));
}

bool DriverFolder::HasList() const
{
    return Exists(ListPath());
}

bool DriverFolder::HasOwnList() const
{
    if (!IsPlainFile(ListPath())) {
        return false;
    }
    // Not by QSettings, which would wait for the other end of a FIFO that takes the list's place.
    const stFileContent file = ReadRegularFile(ListPath(), c_iMaxHead);
    UtilIniReader reader({file.content.constData(), static_cast<std::size_t>(file.content.size())});
    while (reader.Next()) {
        if (reader.Group() + QLatin1Char('/') + reader.Key() == c_strWriterKey) {
            return UtilIniReader::Text(reader.RawValue()) == m_strWriter;
        }
    }
    return m_strWriter.isEmpty();
}

void DriverFolder::WritePrinterList(const QList<stPrinterInfo>& listPrinter, enExitStatus enFailure) const
{
    QByteArray text = "[Main]\nCount=" + QByteArray::number(listPrinter.size()) + '\n';
    if (!m_strWriter.isEmpty()) {
        text += "WrittenBy=" + IniValue(m_strWriter) + '\n';
    }
    for (int i = 0; i < listPrinter.size(); ++i) {
        const stPrinterInfo& info = listPrinter.at(i);
        text += "\n[printer_" + QByteArray::number(i) + "]\nName=" + IniValue(info.strPrinterName) +
                "\nModel=" + IniValue(info.enType) + "\nConnectType=" + QByteArray::number(info.iConnectType) +
                "\nPort=" + IniValue(info.strPort) + "\nURI=" + IniValue(info.strURI) + '\n';
    }
    ReplaceFile(ListPath(), text, enFailure);
}

void DriverFolder::WriteStatus(const QString& strName, const QByteArray& reply, enExitStatus enFailure) const
{
    ReplaceFile(StatusPath(strName), reply, enFailure);
}

void DriverFolder::RemoveStatus(const QString& strName) const
{
    Remove(StatusPath(strName));
}

void DriverFolder::RemovePrinterList() const
{
    Remove(ListPath());
}

// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilLog.h"

#include "PrinterCommon.h"
#include "UtilFile.h"
#include "UtilText.h"

#include <QDateTime>
#include <QDir>
#include <QMutex>
#include <QMutexLocker>

#include <cstdarg>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

bool s_bEnable = false;
int s_iLogIndex = 0;
QString s_strLogName;
QString s_strLogNameTmp;
QMutex s_mutexLog;

constexpr qint64 c_iMaxLogSize = 1024 * 1024;

QString CurrentLogName()
{
    return s_strLogNameTmp + QString::number(s_iLogIndex) + u".log"_s;
}

} // namespace

void SetLogEnable(bool bEnable)
{
    s_bEnable = bEnable;
    if (!bEnable) {
        s_strLogName = QString();
        return;
    }
    s_iLogIndex = 0;
    QDir().mkpath(c_strToolPath);
    s_strLogNameTmp = c_strToolPath + u"/log_tool"_s + QDateTime::currentDateTime().toString(u"_yyyyMMdd_hhmmss_"_s);
    s_strLogName = CurrentLogName();
}

void WriteStringLog(const char* pFile, int iLine, const char* pFunction, QString strFormat, ...)
{
    if (!s_bEnable) {
        return;
    }
    const QMutexLocker locker(&s_mutexLog);

    char message[1024] = {};
    va_list arguments;
    va_start(arguments, strFormat);
    std::vsnprintf(message, sizeof(message), strFormat.toLocal8Bit().constData(), arguments);
    va_end(arguments);

    const QString strLine = QDateTime::currentDateTime().toString(u"[yyyy-MM-dd hh:mm:ss.zzz] ("_s) +
                            QLatin1String(pFile) + QLatin1Char('@') + QString::number(iLine) + QLatin1Char(' ') +
                            QLatin1String(pFunction) + u") "_s + EscapeControls(QString::fromLocal8Bit(message)) +
                            QLatin1Char('\n');

    if (QFile(s_strLogName).size() > c_iMaxLogSize) {
        ++s_iLogIndex;
        s_strLogName = CurrentLogName();
    }
    // Everybody may write to the folder: a link planted under the log's name must not lead a line into another file.
    QFile file;
    struct stat fileStat = {};
    if (OpenWithoutBlocking(file, s_strLogName, QIODevice::Append | QIODevice::Text, O_APPEND | O_NOFOLLOW) &&
        ::fstat(file.handle(), &fileStat) == 0 && fileStat.st_nlink == 1) {
        file.write(strLine.toLocal8Bit());
    }
}

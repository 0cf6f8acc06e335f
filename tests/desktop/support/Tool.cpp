// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Tool.h"

#include "QtCompat.h"

#include <QFileInfo>

namespace {

bool IsInRealTime()
{
    return qEnvironmentVariableIsSet("VORA_REAL_TIME");
}

void Append(QProcessEnvironment& environment, const QString& strName, const QString& strValue)
{
    environment.insert(strName, environment.value(strName) + strValue);
}

} // namespace

Tool::Tool(const QString& strProgram) : m_strProgram(strProgram), m_strClass(QFileInfo(strProgram).fileName())
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(OutputPath());
}

Tool::~Tool()
{
    m_process.kill();
    m_process.waitForFinished();
}

QString Tool::OutputPath() const
{
    return u"/tmp/tool-output.txt"_s;
}

void Tool::Start(const QStringList& listArgument)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s);
    if (!IsInRealTime()) {
        Append(environment, u"LD_PRELOAD"_s, QStringLiteral(" " VORA_SHORT_SLEEP));
        Append(environment, u"ASAN_OPTIONS"_s, u":verify_asan_link_order=0"_s);
    }
    m_process.setProcessEnvironment(environment);
    m_process.start(m_strProgram, listArgument);
    m_process.waitForStarted();
}

int Tool::PauseMSec()
{
    return IsInRealTime() ? 1000 : 100;
}

std::optional<Desktop::Window> Tool::MainWindow() const
{
    return Desktop::FindWindow(m_strClass, u"星原喷墨打印机助手"_s, {860, 300}, {860, 300});
}

std::optional<Desktop::Window> Tool::SettingsWindow() const
{
    return Desktop::FindWindow(m_strClass, u"设置"_s, {400, 300}, {400, 300});
}

// The tray icon, the menu and the balloon have the program's name for a title and are told apart by their size.

std::optional<Desktop::Window> Tool::SmallWindow(QSize min, QSize max) const
{
    return Desktop::FindWindow(m_strClass, m_strClass, min, max);
}

std::optional<Desktop::Window> Tool::TrayIcon() const
{
    return SmallWindow({16, 16}, {48, 48});
}

std::optional<Desktop::Window> Tool::Popup() const
{
    return SmallWindow({60, 50}, {700, 300});
}

QImage Tool::CellPicture(int iRow, int iColumn) const
{
    return Desktop::Screen().copy(m_accessibility.Cell(iRow, iColumn).Extents().adjusted(2, 2, -2, -2));
}

// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Tool.h"

#include "QtCompat.h"

#include <QFileInfo>

namespace {
const QString c_strPreload = u"LD_PRELOAD"_s;
const QString c_strSanitizer = u"ASAN_OPTIONS"_s;

bool IsInRealTime()
{
    return qEnvironmentVariableIsSet("VORA_REAL_TIME");
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
        const QString strOthers = environment.value(c_strPreload);
        environment.insert(c_strPreload, strOthers + QStringLiteral(" " VORA_SHORT_SLEEP));
        const QString strOptions = environment.value(c_strSanitizer);
        environment.insert(c_strSanitizer, strOptions + u":verify_asan_link_order=0"_s);
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

QString Tool::Cell(int iRow, int iColumn) const
{
    return m_accessibility.Cell(m_strClass, iRow, iColumn);
}

int Tool::RowCount() const
{
    return m_accessibility.RowCount(m_strClass);
}

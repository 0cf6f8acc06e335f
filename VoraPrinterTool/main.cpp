// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrinterCommon.h"
#include "QtCompat.h"
#include "UtilCommandOutput.h"
#include "UtilShell.h"
#include "UtilWindow.h"
#include "voraprintertoolwidget.h"

#include <QApplication>
#include <QByteArrayList>
#include <QDir>
#include <QMessageBox>
#include <QPushButton>

#include <unistd.h>

namespace {
constexpr int c_iMaxProcessList = 1024 * 1024; // bytes; whoever may write to the folder may make it longer
} // namespace

/// True when an argument after the program's path is "-hide", in any letter case.
bool CheckIsHide(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i) {
        if (QString::fromLatin1(argv[i]).compare(QLatin1String("-hide"), Qt::CaseInsensitive) == 0) {
            return true;
        }
    }
    return false;
}

/// True when the process list shows a second process of this program's name, of any user. False, so that the program
/// starts, when the tool folder cannot be written.
bool CheckIsRunning()
{
    QDir().mkpath(c_strToolPath);
    const QString strName = QCoreApplication::applicationName().left(15); // all that the kernel keeps of a name
    const UtilCommandOutput output(c_strToolPath + u"pslist.tmp"_s);
    if (!output.IsOpen()) {
        return false;
    }
    RunShellCommand("ps -A | grep " + strName.toLocal8Bit() + " > " + output.ShellPath());

    int iCount = 0;
    const QByteArrayList listLine = output.Read(c_iMaxProcessList).split('\n');
    for (const QByteArray& line : listLine) {
        const QString strLine = QString::fromLocal8Bit(line.constData());
        const QStringList listPart = strLine.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (listPart.size() > 3 && listPart.at(3).trimmed().compare(strName, Qt::CaseInsensitive) == 0) {
            ++iCount;
        }
    }
    return iCount > 1;
}

namespace {

void ShowAlreadyRunning()
{
    QMessageBox box(QMessageBox::Information, c_strProgramTitle, c_strProgramTitle + u"已经处于运行中！"_s,
                    QMessageBox::Ok, nullptr, Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);
    box.button(QMessageBox::Ok)->setText(u"确  定"_s);
    box.exec();
}

/// Returns the event loop's status when the window is gone.
int RunWindow(bool bVisible)
{
    VoraPrinterToolWidget widget;
    BringToScreen(widget); // in the middle of a low desktop its title bar would be out of reach
    widget.setVisible(bVisible);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    LetSessionEnd();
    if (CheckIsRunning()) {
        ShowAlreadyRunning();
        return 0;
    }
    const int iStatus = RunWindow(!CheckIsHide(argc, argv));
    if (VoraPrinterToolWidget::IsWorkerLeftBehind()) {
        ::_exit(iStatus);
    }
    return iStatus;
}

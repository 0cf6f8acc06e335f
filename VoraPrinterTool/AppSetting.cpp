// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"

#include "QtCompat.h"
#include "UtilWindow.h"
#include "ui_AppSetting.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QShowEvent>

namespace {

const QString c_strEntryName = u"vora-k507-tool-autostart.desktop"_s;

QString AutoStartFolder()
{
    return QDir::homePath() + u"/.config/autostart/"_s;
}

} // namespace

AppSetting::AppSetting(QWidget* parent) : QWidget(parent), ui(std::make_unique<Ui::AppSetting>())
{
    ui->setupUi(this);
    SetUpFixedWindow(*this, u"设置"_s);
    ui->checkBoxAutoStart->setText(u"开机启动"_s);
    ui->pushButtonOK->setText(u"确定"_s);
    ui->pushButtonCancel->setText(u"取消"_s);
    InitOption();
}

AppSetting::~AppSetting() = default;

bool AppSetting::ReadAutoStartOption()
{
    return QFile::exists(AutoStartFolder() + c_strEntryName);
}

void AppSetting::SaveAutoStartOption(bool bAutoStart)
{
    const QString strTarget = AutoStartFolder() + c_strEntryName;
    if (!bAutoStart) {
        QFile::remove(strTarget);
        return;
    }
    QDir().mkpath(AutoStartFolder());
    QFile::copy(QCoreApplication::applicationDirPath() + QLatin1Char('/') + c_strEntryName, strTarget);
}

void AppSetting::InitOption()
{
    ui->checkBoxAutoStart->setChecked(ReadAutoStartOption());
}

void AppSetting::SaveOption()
{
    SaveAutoStartOption(ui->checkBoxAutoStart->checkState() != Qt::Unchecked);
}

void AppSetting::on_pushButtonOK_clicked()
{
    setVisible(false);
    SaveOption();
    InitOption();
}

void AppSetting::on_pushButtonCancel_clicked()
{
    setVisible(false);
    InitOption();
}

void AppSetting::showEvent(QShowEvent* event)
{
    if (!event->spontaneous()) { // opened, not merely brought back by the window manager
        InitOption();
    }
    QWidget::showEvent(event);
}

void AppSetting::closeEvent(QCloseEvent* event)
{
    event->ignore();
    setVisible(false);
    InitOption();
}

#include "moc_AppSetting.cpp"

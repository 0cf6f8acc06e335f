// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilLanguageCtrl.h"

// One row a value, English and Chinese side by side. The sizes are the header's: a surplus row does not compile, but a
// missing one leaves empty texts at the end.
// clang-format off
const QString c_strStatusLanguageText[][enLanguageCount] = {
    /*  0 */ {QStringLiteral("Unknown"), QStringLiteral("未知")},
    /*  1 */ {QStringLiteral("Version mismatch"), QStringLiteral("数据格式错误或版本不匹配")},
    /*  2 */ {QStringLiteral("Off-line"), QStringLiteral("脱机")},
    /*  3 */ {QStringLiteral("Ready"), QStringLiteral("就绪")},
    /*  4 */ {QStringLiteral("Initialize"), QStringLiteral("初始化")},
    /*  5 */ {QStringLiteral("Busy"), QStringLiteral("忙碌")},
    /*  6 */ {QStringLiteral("Canceling job"), QStringLiteral("正在取消任务")},
    /*  7 */ {QStringLiteral("Error"), QStringLiteral("错误")},
    /*  8 */ {QStringLiteral("Printing"), QStringLiteral("正在打印")},
    /*  9 */ {QStringLiteral("Scanning"), QStringLiteral("正在扫描")},
    /* 10 */ {QStringLiteral("Copying"), QStringLiteral("正在复印")},
    /* 11 */ {QStringLiteral("Reporting"), QStringLiteral("正在打印报告")},
    /* 12 */ {QStringLiteral("Cleaning"), QStringLiteral("清洁模式")},
    /* 13 */ {QStringLiteral("Alignment"), QStringLiteral("校准模式")},
    /* 14 */ {QStringLiteral("ScanBack"), QStringLiteral("打印机任务中")},
    /* 15 */ {QStringLiteral("Debug"), QStringLiteral("正在打印Debug报告")},
};

const QString c_strErrorDescText[][enLanguageCount] = {
    /*  0 */ {QStringLiteral("Unknown error status"), QStringLiteral("错误状态未知")},
    /*  1 */ {QStringLiteral("WiFi module failed to initialize"), QStringLiteral("故障#5200，请断电重启")},
    /*  2 */ {QStringLiteral("Black Print Head Is Damaged."), QStringLiteral("故障#6143，重启或联系客服")},
    /*  3 */ {QStringLiteral("Color Print Head Is Damaged."), QStringLiteral("故障#6144，重启或联系客服")},
    /*  4 */ {QStringLiteral("The Printer Has Reached The End Of Its Life."), QStringLiteral("打印机已达到使用寿命")},
    /*  5 */ {QStringLiteral("Scanner does not detect the origin"), QStringLiteral("故障#7200，请断电重启")},
    /*  6 */ {QStringLiteral("Paper Feed Motor Stops Abnormally"), QStringLiteral("进纸托盘处卡纸，请取出纸张")},
    /*  7 */ {QStringLiteral("The Carriage Motor Stopped Abnormally"), QStringLiteral("进纸托盘处卡纸，请取出纸张")},
    /*  8 */ {QStringLiteral("The memory is full, please restart the printer"), QStringLiteral("内存已满，请重启打印机")},
    /*  9 */ {QStringLiteral("Fatal Error."), QStringLiteral("Fatal Error.")},
    /* 10 */ {QStringLiteral("Update Failed."), QStringLiteral("更新失败")},
    /* 11 */ {QStringLiteral("No Paper At The Input Tray"), QStringLiteral("进纸托盘处无纸,请放入纸张")},
    /* 12 */ {QStringLiteral("The paper size doesn't match"), QStringLiteral("纸张尺寸不匹配，请选择匹配的纸张，按OK键取消任务")},
    /* 13 */ {QStringLiteral("A paper jam occurs at the paper feed tray"), QStringLiteral("进纸托盘处卡纸,请取出纸张")},
    /* 14 */ {QStringLiteral("Paper is not placed correctly, please replay"), QStringLiteral("纸张放置不正确，请重新放置纸张")},
    /* 15 */ {QStringLiteral("Ink Tank Door Is Open"), QStringLiteral("墨水仓门已打开,请关闭")},
    /* 16 */ {QStringLiteral("Please power off and restart, contact customer service"), QStringLiteral("故障#6121，请断电重启")},
    /* 17 */ {QStringLiteral("Please power off and restart, contact customer service"), QStringLiteral("故障#6122，请断电重启")},
    /* 18 */ {QStringLiteral("Black Print Heads Do Not Match."), QStringLiteral("黑色打印头不匹配，请重新安装打印头")},
    /* 19 */ {QStringLiteral("Color Print Heads Do Not Match."), QStringLiteral("彩色打印头不匹配，请重新安装打印头")},
    /* 20 */ {QStringLiteral("NOZZLE overcurrent."), QStringLiteral("故障#6139，重启或联系客服")},
    /* 21 */ {QStringLiteral("ALIGNMENT_ERR"), QStringLiteral("ALIGNMENT_ERR")},
    /* 22 */ {QStringLiteral("ALIGNMENT_SETUP_WARNING"), QStringLiteral("ALIGNMENT_SETUP_WARNING")},
    /* 23 */ {QStringLiteral("MONO PH temp. too high"), QStringLiteral("黑色打印头识别异常，请重新安装打印头")},
    /* 24 */ {QStringLiteral("COLOR PH temp. too high"), QStringLiteral("彩色打印头识别异常，请重新安装打印头")},
    /* 25 */ {QStringLiteral("Black Ink Level is Low."), QStringLiteral("墨水量低")},
    /* 26 */ {QStringLiteral("COLOR_INK_LOW"), QStringLiteral("COLOR_INK_LOW")},
    /* 27 */ {QStringLiteral("BOTH_INK_LOW"), QStringLiteral("BOTH_INK_LOW")},
    /* 28 */ {QStringLiteral("Cyan Ink Level is Low."), QString()},
    /* 29 */ {QStringLiteral("Magenta Ink Level is Low."), QString()},
    /* 30 */ {QStringLiteral("Yellow Ink Level is Low."), QString()},
    /* 31 */ {QStringLiteral("Black Ink is Empty,please operate in printer"), QStringLiteral("黑色墨水已用完，请在打印机上操作")},
    /* 32 */ {QStringLiteral("Color Ink is Empty,please operate in printer"), QStringLiteral("彩色墨水已用完，请在打印机上操作")},
    /* 33 */ {QStringLiteral("Black print head not detected. Please install correctly."), QStringLiteral("未检测到黑色打印头,请重新安装打印头")},
    /* 34 */ {QStringLiteral("Color print head not detected. Please install correctly."), QStringLiteral("未检测到彩色打印头,请重新安装打印头")},
    /* 35 */ {QStringLiteral("Color Ink is Empty,please operate in printer."), QStringLiteral("青色墨水空，请及时更换墨水瓶")},
    /* 36 */ {QStringLiteral("Color Ink is Empty,please operate in printer."), QStringLiteral("品红色墨水空，请及时更换墨水瓶")},
    /* 37 */ {QStringLiteral("Color Ink is Empty,please operate in printer."), QStringLiteral("黄色墨水空，请及时更换墨水瓶")},
    /* 38 */ {QStringLiteral("No Color Ink, Photo Printing Cannot Be Performed"), QStringLiteral("无彩色墨水,照片打印无法执行")},
    /* 39 */ {QStringLiteral("No Color Ink, Photo Copy Cannot Be Performed"), QStringLiteral("无彩色墨水,照片复印无法执行")},
    /* 40 */ {QStringLiteral("Black Ink Has Run Out, Printing Will Continue to Be Composed of Color Ink"), QStringLiteral("黑色墨水已用完,继续打印将由彩色墨水合成")},
    /* 41 */ {QStringLiteral("The Color Ink Has Run Out, and Continue Printing Will Turn to Black Mode"), QStringLiteral("彩色墨水已用完,继续打印将转为黑色模式")},
    /* 42 */ {QString(), QString()},
    /* 43 */ {QStringLiteral("CUPS_RASTER_PRINT"), QStringLiteral("CUPS_RASTER_PRINT")},
    /* 44 */ {QStringLiteral("URF_RASTER_PRINT"), QStringLiteral("URF_RASTER_PRINT")},
    /* 45 */ {QStringLiteral("NET_ERR"), QStringLiteral("故障#5201，请断电重启")},
};
// clang-format on

namespace {

template <int iRows>
QString TextAt(const QString (&table)[iRows][enLanguageCount], int iRow, int iLanguage)
{
    const bool bInTable = iRow >= 0 && iRow < iRows && iLanguage >= 0 && iLanguage < enLanguageCount;
    return bInTable ? table[iRow][iLanguage] : QString();
}

} // namespace

QString GetStatusText(int iStatus, int iLanguage)
{
    return TextAt(c_strStatusLanguageText, iStatus, iLanguage);
}

QString GetErrorText(int iError, int iLanguage)
{
    return TextAt(c_strErrorDescText, iError, iLanguage);
}

// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilLanguageCtrl.h"

#include <QtTest>

#include <limits>
#include <type_traits>

namespace {

struct stTexts
{
    const char* pEnglish;
    const char* pChinese;
};

// What users read, row by row, oddities included.
// clang-format off
const stTexts c_status[] = {
    /*  0 */ {"Unknown", "未知"},
    /*  1 */ {"Version mismatch", "数据格式错误或版本不匹配"},
    /*  2 */ {"Off-line", "脱机"},
    /*  3 */ {"Ready", "就绪"},
    /*  4 */ {"Initialize", "初始化"},
    /*  5 */ {"Busy", "忙碌"},
    /*  6 */ {"Canceling job", "正在取消任务"},
    /*  7 */ {"Error", "错误"},
    /*  8 */ {"Printing", "正在打印"},
    /*  9 */ {"Scanning", "正在扫描"},
    /* 10 */ {"Copying", "正在复印"},
    /* 11 */ {"Reporting", "正在打印报告"},
    /* 12 */ {"Cleaning", "清洁模式"},
    /* 13 */ {"Alignment", "校准模式"},
    /* 14 */ {"ScanBack", "打印机任务中"},
    /* 15 */ {"Debug", "正在打印Debug报告"},
};

const stTexts c_error[] = {
    /*  0 */ {"Unknown error status", "错误状态未知"},
    /*  1 */ {"WiFi module failed to initialize", "故障#5200，请断电重启"},
    /*  2 */ {"Black Print Head Is Damaged.", "故障#6143，重启或联系客服"},
    /*  3 */ {"Color Print Head Is Damaged.", "故障#6144，重启或联系客服"},
    /*  4 */ {"The Printer Has Reached The End Of Its Life.", "打印机已达到使用寿命"},
    /*  5 */ {"Scanner does not detect the origin", "故障#7200，请断电重启"},
    /*  6 */ {"Paper Feed Motor Stops Abnormally", "进纸托盘处卡纸，请取出纸张"},
    /*  7 */ {"The Carriage Motor Stopped Abnormally", "进纸托盘处卡纸，请取出纸张"},
    /*  8 */ {"The memory is full, please restart the printer", "内存已满，请重启打印机"},
    /*  9 */ {"Fatal Error.", "Fatal Error."},
    /* 10 */ {"Update Failed.", "更新失败"},
    /* 11 */ {"No Paper At The Input Tray", "进纸托盘处无纸,请放入纸张"},
    /* 12 */ {"The paper size doesn't match", "纸张尺寸不匹配，请选择匹配的纸张，按OK键取消任务"},
    /* 13 */ {"A paper jam occurs at the paper feed tray", "进纸托盘处卡纸,请取出纸张"},
    /* 14 */ {"Paper is not placed correctly, please replay", "纸张放置不正确，请重新放置纸张"},
    /* 15 */ {"Ink Tank Door Is Open", "墨水仓门已打开,请关闭"},
    /* 16 */ {"Please power off and restart, contact customer service", "故障#6121，请断电重启"},
    /* 17 */ {"Please power off and restart, contact customer service", "故障#6122，请断电重启"},
    /* 18 */ {"Black Print Heads Do Not Match.", "黑色打印头不匹配，请重新安装打印头"},
    /* 19 */ {"Color Print Heads Do Not Match.", "彩色打印头不匹配，请重新安装打印头"},
    /* 20 */ {"NOZZLE overcurrent.", "故障#6139，重启或联系客服"},
    /* 21 */ {"ALIGNMENT_ERR", "ALIGNMENT_ERR"},
    /* 22 */ {"ALIGNMENT_SETUP_WARNING", "ALIGNMENT_SETUP_WARNING"},
    /* 23 */ {"MONO PH temp. too high", "黑色打印头识别异常，请重新安装打印头"},
    /* 24 */ {"COLOR PH temp. too high", "彩色打印头识别异常，请重新安装打印头"},
    /* 25 */ {"Black Ink Level is Low.", "墨水量低"},
    /* 26 */ {"COLOR_INK_LOW", "COLOR_INK_LOW"},
    /* 27 */ {"BOTH_INK_LOW", "BOTH_INK_LOW"},
    /* 28 */ {"Cyan Ink Level is Low.", ""},
    /* 29 */ {"Magenta Ink Level is Low.", ""},
    /* 30 */ {"Yellow Ink Level is Low.", ""},
    /* 31 */ {"Black Ink is Empty,please operate in printer", "黑色墨水已用完，请在打印机上操作"},
    /* 32 */ {"Color Ink is Empty,please operate in printer", "彩色墨水已用完，请在打印机上操作"},
    /* 33 */ {"Black print head not detected. Please install correctly.", "未检测到黑色打印头,请重新安装打印头"},
    /* 34 */ {"Color print head not detected. Please install correctly.", "未检测到彩色打印头,请重新安装打印头"},
    /* 35 */ {"Color Ink is Empty,please operate in printer.", "青色墨水空，请及时更换墨水瓶"},
    /* 36 */ {"Color Ink is Empty,please operate in printer.", "品红色墨水空，请及时更换墨水瓶"},
    /* 37 */ {"Color Ink is Empty,please operate in printer.", "黄色墨水空，请及时更换墨水瓶"},
    /* 38 */ {"No Color Ink, Photo Printing Cannot Be Performed", "无彩色墨水,照片打印无法执行"},
    /* 39 */ {"No Color Ink, Photo Copy Cannot Be Performed", "无彩色墨水,照片复印无法执行"},
    /* 40 */ {"Black Ink Has Run Out, Printing Will Continue to Be Composed of Color Ink", "黑色墨水已用完,继续打印将由彩色墨水合成"},
    /* 41 */ {"The Color Ink Has Run Out, and Continue Printing Will Turn to Black Mode", "彩色墨水已用完,继续打印将转为黑色模式"},
    /* 42 */ {"", ""},
    /* 43 */ {"CUPS_RASTER_PRINT", "CUPS_RASTER_PRINT"},
    /* 44 */ {"URF_RASTER_PRINT", "URF_RASTER_PRINT"},
    /* 45 */ {"NET_ERR", "故障#5201，请断电重启"},
};
// clang-format on

void AddTextColumns()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("chinese");
}

template <int iRows>
void AddTextRows(const stTexts (&table)[iRows])
{
    AddTextColumns();
    for (int i = 0; i < iRows; ++i) {
        QTest::addRow("%d", i) << i << QString::fromUtf8(table[i].pEnglish) << QString::fromUtf8(table[i].pChinese);
    }
}

void AddOutsideRows(int iRows)
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("language");
    const int iMin = std::numeric_limits<int>::min();
    const int iMax = std::numeric_limits<int>::max();
    for (const int iRow : {-1, iRows, iRows + 1, iMin, iMax}) {
        QTest::addRow("row %d, English", iRow) << iRow << 0;
        QTest::addRow("row %d, Chinese", iRow) << iRow << 1;
    }
    for (const int iLanguage : {-1, 2, iMin, iMax}) {
        QTest::addRow("first row, language %d", iLanguage) << 0 << iLanguage;
        QTest::addRow("last row, language %d", iLanguage) << iRows - 1 << iLanguage;
    }
}

} // namespace

class tst_UtilLanguageCtrl : public QObject
{
    Q_OBJECT

private slots:
    void tablesHaveOneRowPerValue();
    void statusText_data() { AddTextRows(c_status); }
    void statusText();
    void errorText_data() { AddTextRows(c_error); }
    void errorText();
    void statusOutsideTheTableHasNoText_data() { AddOutsideRows(16); }
    void statusOutsideTheTableHasNoText();
    void errorOutsideTheTableHasNoText_data() { AddOutsideRows(46); }
    void errorOutsideTheTableHasNoText();
};

void tst_UtilLanguageCtrl::tablesHaveOneRowPerValue()
{
    QCOMPARE(std::extent_v<decltype(c_strStatusLanguageText)>, std::size_t(16));
    QCOMPARE(std::extent_v<decltype(c_strErrorDescText)>, std::size_t(46));
    QCOMPARE((std::extent_v<decltype(c_strStatusLanguageText), 1>), std::size_t(2));
    QCOMPARE((std::extent_v<decltype(c_strErrorDescText), 1>), std::size_t(2));
    QCOMPARE(std::extent_v<decltype(c_status)>, std::size_t(16));
    QCOMPARE(std::extent_v<decltype(c_error)>, std::size_t(46));
}

void tst_UtilLanguageCtrl::statusText()
{
    QFETCH(const int, row);
    QFETCH(const QString, english);
    QFETCH(const QString, chinese);
    QCOMPARE(GetStatusText(row, 0), english);
    QCOMPARE(GetStatusText(row, 1), chinese);
    QCOMPARE(c_strStatusLanguageText[row][0], english);
    QCOMPARE(c_strStatusLanguageText[row][1], chinese);
}

void tst_UtilLanguageCtrl::errorText()
{
    QFETCH(const int, row);
    QFETCH(const QString, english);
    QFETCH(const QString, chinese);
    QCOMPARE(GetErrorText(row, 0), english);
    QCOMPARE(GetErrorText(row, 1), chinese);
    QCOMPARE(c_strErrorDescText[row][0], english);
    QCOMPARE(c_strErrorDescText[row][1], chinese);
}

void tst_UtilLanguageCtrl::statusOutsideTheTableHasNoText()
{
    QFETCH(const int, row);
    QFETCH(const int, language);
    QCOMPARE(GetStatusText(row, language), QString());
}

void tst_UtilLanguageCtrl::errorOutsideTheTableHasNoText()
{
    QFETCH(const int, row);
    QFETCH(const int, language);
    QCOMPARE(GetErrorText(row, language), QString());
}

QTEST_MAIN(tst_UtilLanguageCtrl)

#include "tst_UtilLanguageCtrl.moc"

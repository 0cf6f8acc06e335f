// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilText.h"

#include "QtCompat.h"
#include "Rows.h"

class tst_UtilText : public QObject
{
    Q_OBJECT

private slots:
    void escapesControls_data()
    {
        AddRows(u"control-escapes.json"_s, {"text", "escaped"});
        const QString strHalf(QChar(0xD83D));
        QTest::newRow("half a character") << strHalf + QLatin1Char('a') << strHalf + QLatin1Char('a');
        const QString strOther(QChar(0xDDA8));
        QTest::newRow("the other half") << u"\n"_s + strOther << u"\\x0A"_s + strOther;
        QTest::newRow("half a character at the end") << strHalf << strHalf;
    }

    void escapesControls()
    {
        QFETCH(const QString, text);
        QTEST(EscapeControls(text), "escaped");
    }

    void escapesHaveTwoFourOrEightDigits()
    {
        QCOMPARE(EscapeOf(0xFF), u"\\xFF"_s);
        QCOMPARE(EscapeOf(0x100), u"\\u0100"_s);
        QCOMPARE(EscapeOf(0xFFFF), u"\\uFFFF"_s);
        QCOMPARE(EscapeOf(0x10000), u"\\U00010000"_s);
    }
};

QTEST_APPLESS_MAIN(tst_UtilText)

#include "tst_UtilText.moc"

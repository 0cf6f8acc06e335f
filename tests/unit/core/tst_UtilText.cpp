// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilText.h"

#include "QtCompat.h"

#include <QtTest>

class tst_UtilText : public QObject
{
    Q_OBJECT

private slots:
    void escapesControls_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("escaped");
        const auto add = [](const char* pName, const QString& strText, const char* pEscaped) {
            QTest::newRow(pName) << strText << QString::fromUtf8(pEscaped);
        };
        add("empty", QString(), "");
        add("plain", u"Off ice \\ %s"_s, "Off ice \\ %s");
        add("Chinese", u"办公室🖨"_s, "办公室🖨");
        add("controls", QString::fromLatin1("\0\t\n\x1B\x7F\x9B", 6), "\\x00\\x09\\x0A\\x1B\\x7F\\x9B");
        add("ends of lines", u"\u2028\u2029"_s, "\\u2028\\u2029");
        add("directions", u"\u202E\u2066"_s, "\\u202E\\u2066");
        add("beyond four digits", u"\U000E0001"_s, "\\U000E0001");
        const QString strHalf(QChar(0xD83D));
        QTest::newRow("half a character") << strHalf + QLatin1Char('a') << strHalf + QLatin1Char('a');
        QTest::newRow("half a character at the end") << strHalf << strHalf;
    }

    void escapesControls()
    {
        QFETCH(const QString, text);
        QTEST(EscapeControls(text), "escaped");
    }
};

QTEST_APPLESS_MAIN(tst_UtilText)

#include "tst_UtilText.moc"

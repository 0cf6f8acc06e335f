// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "StatusFolder.h"

namespace {
const QString c_strCalls = u"/tmp/cancel-calls"_s;
} // namespace

/// The program in the user's locale, whose encoding file names and commands do not follow.
class tst_Locale : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        FakeProgram(u"cancel"_s, "printf '%s\\n' \"$@\" >> " + c_strCalls.toLocal8Bit() + "\n");
        const QString strFolder = u"/tmp/locale"_s;
        QVERIFY(QDir().mkpath(strFolder));
        for (const QString& strCharset : {u"UTF-8"_s, u"GB18030"_s}) {
            const QString strLocale = strFolder + u"/zh_CN."_s + strCharset;
            Desktop::Run(u"localedef"_s, {u"-i"_s, u"zh_CN"_s, u"-f"_s, strCharset, strLocale});
            QVERIFY(QFile::exists(strLocale + u"/LC_CTYPE"_s));
        }
        qputenv("LOCPATH", strFolder.toUtf8());
    }

    void chineseQueueIsFollowedCancelledAndLogged_data()
    {
        QTest::addColumn<QByteArray>("locale");
        for (const char* pLocale : {"C", "zh_CN.UTF-8", "zh_CN.GB18030"}) {
            QTest::newRow(pLocale) << QByteArray(pLocale);
        }
    }

    void chineseQueueIsFollowedCancelledAndLogged()
    {
        QFETCH(QByteArray, locale);
        const QString strName = u"书房"_s;
        QFile::remove(c_strCalls);
        WriteReadyPrinters({strName});
        QVERIFY(QFile::exists(m_folder.StatusPath(strName)));
        m_tool = std::make_unique<Tool>(QStringLiteral(VORA_SUPPORT_BUILD));
        const QByteArray old = qgetenv("LC_ALL");
        qputenv("LC_ALL", locale);
        m_tool->Start();
        qputenv("LC_ALL", old);
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QCOMPARE(m_tool->Cell(0, 0), strName);
        WriteStatus(strName, Reply(0x03));
        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在取消任务"_s);
        QCOMPARE(ReadFile(c_strCalls), QByteArray("\xE4\xB9\xA6\xE6\x88\xBF\n"));
        QVERIFY(LogText().contains(" CancelJobs) cancel by printer \xE4\xB9\xA6\xE6\x88\xBF\n"));
    }
};

QTEST_GUILESS_MAIN(tst_Locale)

#include "tst_Locale.moc"

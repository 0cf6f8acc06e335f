// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilShell.h"

#include "QtCompat.h"

#include "TestFiles.h"

#include <QtTest>

#include <unistd.h>

class tst_UtilShell : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_folder.isValid());
        QFile::remove(QString::fromLocal8Bit(OutputPath()));
    }

    void quote_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("word");
        const auto add = [](const QString& strText, const QString& strWord) {
            QTest::newRow(qPrintable(strText)) << strText << strWord;
        };
        add(u"it's"_s, u"'it'\\''s'"_s);
        add(u"'"_s, u"''\\'''"_s);
        add(u"''"_s, u"''\\'''\\'''"_s);
        add(u"'x'"_s, u"''\\''x'\\'''"_s);
        add(u"a\\'; touch /tmp/x; '"_s, u"'a\\'\\''; touch /tmp/x; '\\'''"_s);
        const QStringList listPlain = // a home and a dash are none to the shell inside quotes
            u"Office@@ two  words @say \"hi\"@a$(echo x)b@a`echo x`b@$HOME@a;b&c|d@a>b<c@*?[a]{b,c}@~@a\\@#x@a!b@50%s@"
            "a\nb\t\n@-a@Off,ice@办公室打印机@🖨"_s.split(QLatin1Char('@'));
        for (const QString& strText : listPlain) {
            add(strText, QLatin1Char('\'') + strText + QLatin1Char('\''));
        }
    }

    void quote()
    {
        QFETCH(const QString, text);
        QTEST(QString::fromUtf8(QuoteForShell(text)), "word");
        RunShellCommand("set -- " + QuoteForShell(text) + "; printf '%d:%s' $# \"$1\" > " + OutputPath());
        QCOMPARE(Output(), "1:" + text.toUtf8());
    }

    void quotedWordsStandSideBySide()
    {
        RunShellCommand("printf '<%s>' " + QuoteForShell(u"a 'b'"_s) + ' ' + QuoteForShell(QString()) + ' ' +
                        QuoteForShell(u"c"_s) + " > " + OutputPath());
        QCOMPARE(Output(), QByteArray("<a 'b'><><c>"));
    }

    void runWaitsForTheEnd()
    {
        QElapsedTimer timer;
        timer.start();
        RunShellCommand("sleep 0.3; printf done > " + OutputPath());
        QVERIFY(timer.elapsed() >= 300);
        QCOMPARE(Output(), QByteArray("done"));
    }

    void runIgnoresFailure()
    {
        for (const char* pCommand : {"exit 3", "no-such-command-here 2> /dev/null", "kill -9 $$", ""}) {
            RunShellCommand(pCommand);
        }
        RunShellCommand("printf next > " + OutputPath());
        QCOMPARE(Output(), QByteArray("next"));
    }

private:
    QByteArray OutputPath() const { return m_folder.filePath(u"out"_s).toLocal8Bit(); }
    QByteArray Output() const { return ReadFile(QString::fromLocal8Bit(OutputPath())); }

    QTemporaryDir m_folder;
};

QTEST_MAIN(tst_UtilShell)

#include "tst_UtilShell.moc"

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
        ::alarm(60); // a command that never ends
    }

    void quote_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("word");
        const auto add = [](const char* pName, const char* pText, const char* pWord) {
            QTest::newRow(pName) << QString::fromUtf8(pText) << QByteArray(pWord);
        };
        add("plain", "Office", "'Office'");
        add("empty", "", "''");
        add("blanks", " two  words ", "' two  words '");
        add("single quote", "it's", "'it'\\''s'");
        add("only a single quote", "'", "''\\'''");
        add("two single quotes", "''", "''\\'''\\'''");
        add("quote at both ends", "'x'", "''\\''x'\\'''");
        add("escape of a quote", "a\\'; touch /tmp/x; '", "'a\\'\\''; touch /tmp/x; '\\'''");
        add("double quotes", "say \"hi\"", "'say \"hi\"'");
        add("command substitution", "a$(echo x)b", "'a$(echo x)b'");
        add("backticks", "a`echo x`b", "'a`echo x`b'");
        add("variable", "$HOME", "'$HOME'");
        add("separators", "a;b&c|d", "'a;b&c|d'");
        add("redirection", "a>b<c", "'a>b<c'");
        add("wildcards", "*?[a]{b,c}", "'*?[a]{b,c}'");
        add("home", "~", "'~'");
        add("backslash at the end", "a\\", "'a\\'");
        add("comment", "#x", "'#x'");
        add("history", "a!b", "'a!b'");
        add("per cent", "50%s", "'50%s'");
        add("line break", "a\nb\t\n", "'a\nb\t\n'");
        add("leading dash", "-a", "'-a'");
        add("comma", "Off,ice", "'Off,ice'");
        add("Chinese", "办公室打印机", "'办公室打印机'");
        add("beyond the basic plane", "🖨", "'🖨'");
    }

    void quote()
    {
        QFETCH(const QString, text);
        QTEST(QuoteForShell(text), "word");
    }

    void shellSeesOneLiteralWord_data() { quote_data(); }
    void shellSeesOneLiteralWord()
    {
        QFETCH(const QString, text);
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

    void runIgnoresFailure_data()
    {
        QTest::addColumn<QByteArray>("command");
        QTest::newRow("failing command") << QByteArray("exit 3");
        QTest::newRow("no such command") << QByteArray("no-such-command-here 2> /dev/null");
        QTest::newRow("killed by a signal") << QByteArray("kill -9 $$");
        QTest::newRow("empty") << QByteArray();
    }

    void runIgnoresFailure()
    {
        QFETCH(const QByteArray, command);
        RunShellCommand(command);
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

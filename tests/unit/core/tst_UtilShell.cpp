// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilShell.h"

#include "QtCompat.h"
#include "Rows.h"

#include <QTemporaryDir>

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

    void quote_data() { AddRows(u"shell-words.json"_s, {"text", "word"}); }
    void quote()
    {
        QFETCH(const QString, text);
        QTEST(QString::fromUtf8(QuoteForShell(text)), "word");
        RunShellCommand("set -- " + QuoteForShell(text) + "; printf '%d:%s' $# \"$1\" > " + OutputPath());
        QCOMPARE(Output(), "1:" + text.toUtf8());
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

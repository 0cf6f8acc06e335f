// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Types the commands of each transcript anew and compares what comes of them with what stands below them, byte by byte.
// prelude.sh beside the transcripts of this folder explains what they consist of.

#include "HandMadeReply.h"
#include "QtCompat.h"
#include "TestFiles.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>
#include <iterator>

namespace {

constexpr int c_iPatience = 60000; // milliseconds
const QString c_strTranscripts = QStringLiteral(VORA_TRANSCRIPTS);

/// Each line of what a command wrote, behind the mark; behind the last one "\" when it has no end.
QByteArray Marked(char cMark, const QByteArray& text)
{
    QByteArrayList listLine = text.split('\n');
    const bool bEnded = listLine.last().isEmpty();
    if (bEnded) {
        listLine.removeLast();
    }
    QByteArray marked;
    for (const QByteArray& line : listLine) {
        marked += cMark + QByteArray(line.isEmpty() ? "" : " ") + line + '\n';
    }
    return marked + (bEnded ? "" : "\\\n");
}

/// What stands below a command: its output, its messages, and its exit status when that is not 0.
QByteArray Outcome(const QByteArray& command)
{
    QProcess process;
    process.start(u"sh"_s, {u"-c"_s, u". \"$0\"\n"_s + QString::fromUtf8(command), QStringLiteral(VORA_PRELUDE)});
    const bool bEnded = process.waitForFinished(c_iPatience) && process.exitStatus() == QProcess::NormalExit;
    const QByteArray status = bEnded ? QByteArray::number(process.exitCode()) : QByteArray("did not end");
    return Marked('|', process.readAllStandardOutput()) + Marked('!', process.readAllStandardError()) +
           (status == "0" ? QByteArray() : "= " + status + '\n');
}

/// The transcript with what comes of its commands today.
QByteArray Replayed(const QByteArray& transcript)
{
    QByteArray replayed;
    QByteArray command;
    const QByteArrayList listLine = transcript.split('\n');
    for (int i = 0; i < listLine.size(); ++i) {
        const QByteArray& line = listLine.at(i);
        const bool bCommand = line.startsWith("$ ") || line.startsWith("> ");
        if (bCommand || line.isEmpty() || line.startsWith('#')) {
            replayed += line + '\n';
        }
        if (bCommand) {
            command += line.mid(2) + '\n';
            if (!listLine.value(i + 1).startsWith("> ")) {
                replayed += Outcome(command);
                command.clear();
            }
        }
    }
    replayed.chop(1); // behind the last end of a line there is no line
    return replayed;
}

} // namespace

class tst_Transcripts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("PATH", QByteArray(VORA_TOOLS) + ':' + qgetenv("PATH"));
        qputenv("SOURCE", VORA_SOURCE);
        qputenv("CHANGE_BEFORE_OPEN", VORA_CHANGE_BEFORE_OPEN);
        qputenv("REFUSE_TIME_OUT", VORA_REFUSE_TIME_OUT);
    }

    void comesTrueAgain_data()
    {
        QTest::addColumn<QByteArray>("transcript");
        const QStringList listName = QDir(c_strTranscripts).entryList({u"*.txt"_s});
        QVERIFY(!listName.isEmpty());
        for (const QString& strName : listName) {
            QTest::newRow(qPrintable(strName)) << ReadFile(c_strTranscripts + strName);
        }
    }

    /// In an empty folder, with no printers.
    void comesTrueAgain()
    {
        QFETCH(const QByteArray, transcript);
        const QTemporaryDir folder;
        QVERIFY(QDir::setCurrent(folder.path()));
        QVERIFY(WriteFile(u"full.dat"_s, HandMadeReply()));
        QDir(u"/opt/vora"_s).removeRecursively();
        QVERIFY(transcript.contains("\n$ "));
        const QByteArray replayed = Replayed(transcript);
        if (replayed == transcript) {
            return;
        }
        const QString strToday = QStringLiteral(VORA_TODAY) + QDir(c_strTranscripts).dirName() + QLatin1Char('-') +
                                 QString::fromLatin1(QTest::currentDataTag());
        QVERIFY(WriteFile(strToday, replayed));
        const QByteArrayList listFound = replayed.split('\n');
        const QByteArrayList listExpected = transcript.split('\n');
        const auto differ =
            std::mismatch(listFound.begin(), listFound.end(), listExpected.begin(), listExpected.end()).first;
        const int iLine = static_cast<int>(std::distance(listFound.begin(), differ));
        const QByteArray message = "line " + QByteArray::number(iLine + 1) + " is now \"" + listFound.value(iLine) +
                                   "\", was \"" + listExpected.value(iLine) + "\"; all of it: " + strToday.toUtf8();
        QFAIL(message.constData());
    }
};

QTEST_GUILESS_MAIN(tst_Transcripts)

#include "tst_Transcripts.moc"

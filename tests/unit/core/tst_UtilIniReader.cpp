// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilIniReader.h"

#include "QtCompat.h"
#include "TestFiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <random>

namespace {

std::string_view View(const QByteArray& text)
{
    return {text.constData(), static_cast<std::size_t>(text.size())};
}

/// Each entry as group, key and text.
QStringList Entries(const QByteArray& text)
{
    QStringList listEntry;
    UtilIniReader reader(View(text));
    while (reader.Next()) {
        listEntry.append(reader.Group() + QLatin1Char('|') + reader.Key() + QLatin1Char('|') +
                         UtilIniReader::Text(reader.RawValue()));
    }
    return listEntry;
}

/// An entry's text by Qt's own reader. Each text is a file of its own: QSettings does not read again what it takes for
/// known.
QString FindWithQt(const QTemporaryDir& folder, const QByteArray& text, const QString& strKey)
{
    static int s_iFile = 0;
    const QString strPath = folder.filePath(QString::number(++s_iFile));
    if (!WriteFile(strPath, text)) {
        return u"not written"_s;
    }
    QSettings settings(strPath, QSettings::IniFormat);
    SetIniUtf8(settings);
    const QVariant value = settings.value(strKey);
    QFile::remove(strPath);
    return value.userType() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(',')) : value.toString();
}

} // namespace

class tst_UtilIniReader : public QObject
{
    Q_OBJECT

private slots:
    void entries_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("entries"); // blank between them
        const auto add = [](const char* pName, const QByteArray& content, const char* pEntries) {
            QTest::newRow(pName) << content << QString::fromUtf8(pEntries);
        };
        add("empty", "", "");
        add("two groups", "[a]\nx=1\ny=2\n[b]\nx=3\n", "a|x|1 a|y|2 b|x|3");
        add("before the first group", "x=1", "|x|1");
        add("no line end", "[a]\nx=1", "a|x|1");
        add("carriage returns", "[a]\r\nx=1\r\n\r\ny=2\r", "a|x|1 a|y|2");
        add("blanks", " [ a ] \n\t x \t= 1 \n", "a|x|1");
        add("comments", "; [b]\n[a];c\n;x=0\nx=1;2\n ;y=3\n", "a|x|1");
        add("no value", "[a]\nx\ny=\n", "a|y|");
        add("group not closed", "[a\nx=1\n", "a|x|1");
        add("text behind a group", "[a]b=c\nx=1\n", "a|x|1");
        add("quoted line end", "[a]\nx=\"1\n[b]\ny\"\n", "a|x|1\n[b]\ny");
        add("quote not closed", "[a]\nx=\"1\n[b]\ny=2\n", "a|x|1\n[b]\ny=2\n");
        add("line that goes on", "[a]\nx=1\\\n2\\\r\n3\n", "a|x|123");
        add("second equals sign", "[a]\nx=y=z\n", "a|x|y=z");
        add("escaped names", "[%61%U0062c]\n%78\\y=1\n", "abc|x/y|1");
        add("names that are no escapes", "[%]\n%6=1\n%zz=2\n%U12=3\n", "%|%6|1 %|%zz|2 %|%U12|3");
        add("Chinese", "[墨]\n办=公\n", "墨|办|公");
        add("byte order mark", "\xEF\xBB\xBF[a]\nx=1\n", "a|x|1");
    }

    void entries()
    {
        QFETCH(const QByteArray, content);
        QTEST(Entries(content).join(QLatin1Char(' ')), "entries");
    }

    void text_data()
    {
        QTest::addColumn<QByteArray>("raw");
        QTest::addColumn<QString>("text");
        const auto add = [](const QByteArray& raw, const char* pText) {
            QTest::newRow(raw.constData()) << raw << QString::fromUtf8(pText);
        };
        for (const char* pText : {"", "Office", "a,", ",a", "@", "@,@", "@home", "Off,@ice", "@Off,ice", "@String(abc",
                                  "@Rect(1 2 3 4)", "@Variant(x)"}) {
            add(pText, pText);
        }
        add("  two words \t", "two words");
        add("\"  quoted \"  ", "  quoted ");
        add("\"a\" \"b\" c ", "abc ");
        add("\\x4e2d\\x6587", "中文");
        add("\\x4E2D!", "中!");
        add("\\x41g", "Ag");
        add("\\xg", "g");
        add("\\101\\1018", "AA8");
        add("\\a\\t\\n\\\"\\'\\?\\\\", "\a\t\n\"'?\\");
        add("a\\qb", "ab");
        add("a \\q", "a ");
        add("a \\t ", "a \t");
        add("a \\", "a ");
        add("a \\x", "a ");
        add("x, y", "x,y");
        add("a ,b", "a,b");
        add("\"a,b\",c", "a,b,c");
        add("\" a \" , b", " a ,b");
        add("@@home", "@home");
        add("@@@home", "@@home");
        add("\"@@home\"", "@home");
        add("\\x40@home", "@home");
        add("Off,@@ice", "Off,@ice");
        add("@Invalid() ", "");
        add("@ByteArray(abc)", "abc");
        add("@String(abc)", "abc");
    }

    void text()
    {
        QFETCH(const QByteArray, raw);
        QTEST(UtilIniReader::Text(View(raw)), "text");
    }

    /// Random texts of all that means something in the format. Left out is what Qt's reader gives a type, which depends
    /// on the version, and broken UTF-8.
    void agreesWithQt()
    {
        const QTemporaryDir folder;
        const QList<QByteArray> listPart = {
            "\n",  "\n",     "\r",  "\r\n",   "\n\r",   "[g]",  "[g]\nk=", "k=",      "\nk=",  "[",
            "]",   "=",      ";",   "\"",     "\\",     "\\\\", "\\\"",    "\\n",     "\\x41", "\\x4e",
            "\\x", "\\101",  "\\8", "\\\n",   "\\\r\n", ",",    ", ",      " ",       "  ",    "\t",
            "a",   "Office", "%6b", "%U006b", "%",      "%67",  "办",      "\\xe9f0", "41",    "g"};
        std::mt19937 random(12345); // NOLINT(cert-msc51-cpp): the same texts each time
        int iFound = 0;
        for (int i = 0; i < 3000; ++i) {
            QByteArray text = "[g]\nk=";
            for (std::size_t iParts = random() % 20; iParts > 0; --iParts) {
                text += listPart.at(static_cast<int>(random() % static_cast<std::size_t>(listPart.size())));
            }
            const QStringList listFound = Entries(text).filter(QRegularExpression(u"^g\\|k\\|"_s));
            const QString strFound = listFound.isEmpty() ? QString() : listFound.last().mid(4); // the last one counts
            const QString strExpected = FindWithQt(folder, text, u"g/k"_s);
            QVERIFY2(strFound == strExpected, qPrintable(QString::fromLatin1(text.toPercentEncoding()) + u": '"_s +
                                                         strFound + u"', not '"_s + strExpected + QLatin1Char('\'')));
            iFound += strFound.isEmpty() ? 0 : 1;
        }
        QVERIFY(iFound > 1000);
    }
};

QTEST_GUILESS_MAIN(tst_UtilIniReader)

#include "tst_UtilIniReader.moc"

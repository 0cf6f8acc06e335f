// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilIniReader.h"

#include "QtCompat.h"
#include "Rows.h"

#include <QTemporaryDir>

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
    void entries_data() { AddRows(u"ini-entries.json"_s, {"content", "entries"}); }
    void entries()
    {
        QFETCH(const QString, content);
        QTEST(Entries(content.toUtf8()).join(QLatin1Char(' ')), "entries");
    }

    void text_data() { AddRows(u"ini-texts.json"_s, {"raw", "text"}); }
    void text()
    {
        QFETCH(const QString, raw);
        QTEST(UtilIniReader::Text(View(raw.toUtf8())), "text");
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

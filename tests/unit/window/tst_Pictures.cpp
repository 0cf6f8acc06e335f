// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QPainter>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QtTest>

#include <cstdlib>

namespace {

constexpr int c_iSize = 64;      // at which pictures are compared
constexpr double c_dAlike = 8.0; // of 255, mean difference of a colour; another motif is many times as far

/// The picture on white, so that what is transparent has a colour too.
QImage OnWhite(const QImage& picture)
{
    QImage image(c_iSize, c_iSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.drawImage(0, 0, picture.scaled(c_iSize, c_iSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return image;
}

double Difference(const QImage& left, const QImage& right)
{
    double dSum = 0;
    for (int iY = 0; iY < c_iSize; ++iY) {
        for (int iX = 0; iX < c_iSize; ++iX) {
            const QRgb first = left.pixel(iX, iY);
            const QRgb second = right.pixel(iX, iY);
            dSum += std::abs(qRed(first) - qRed(second)) + std::abs(qGreen(first) - qGreen(second)) +
                    std::abs(qBlue(first) - qBlue(second));
        }
    }
    return dSum / (3.0 * c_iSize * c_iSize);
}

int Colours(const QImage& image)
{
    QSet<QRgb> setColour;
    for (int iY = 0; iY < c_iSize; ++iY) {
        for (int iX = 0; iX < c_iSize; ++iX) {
            setColour.insert(image.pixel(iX, iY));
        }
    }
    return static_cast<int>(setColour.size());
}

} // namespace

/// What users see of the program where its window is not: the pictures of window, tray and menu.
class tst_Pictures : public QObject
{
    Q_OBJECT

private slots:
    /// The scalable picture is rendered by the library that desktops use.
    void initTestCase()
    {
        const QTemporaryDir folder;
        const QString strPath = folder.filePath(u"drawing.png"_s);
        const QStringList listArgument = {
            u"-w"_s, u"256"_s, u"-h"_s, u"256"_s, u"-o"_s, strPath, QStringLiteral(VORA_DRAWING)};
        QCOMPARE(QProcess::execute(u"rsvg-convert"_s, listArgument), 0);
        m_drawing = QImage(strPath);
        QCOMPARE(m_drawing.size(), QSize(256, 256));
    }

    void drawingShowsTheMotif()
    {
        const QImage onWhite = OnWhite(m_drawing);
        QVERIFY2(Colours(onWhite) > 50, QByteArray::number(Colours(onWhite)));
        QImage plain = onWhite;
        plain.fill(Qt::white);
        QVERIFY(Difference(onWhite, plain) > 5 * c_dAlike);          // neither empty
        QVERIFY(Difference(onWhite, onWhite.mirrored()) > c_dAlike); // nor one shape that could be any
    }

    void pictureShowsTheMotif_data()
    {
        QTest::addColumn<QString>("picture");
        QTest::newRow("resource") << u"resource"_s;
        QTest::newRow("window") << u"window"_s;
        QTest::newRow("tray") << u"tray"_s;
    }

    void pictureShowsTheMotif()
    {
        QFETCH(const QString, picture);
        const VoraPrinterToolWidget window;
        QImage image;
        if (picture == QLatin1String("resource")) {
            image = QImage(u":/Icon/Resource/Vora.png"_s);
        } else {
            const QIcon icon = picture == QLatin1String("tray") ? window.m_pTrayIcon->icon() : window.windowIcon();
            image = icon.pixmap(c_iSize).toImage();
        }
        QVERIFY(image.width() >= c_iSize); // not blown up on any display
        const QImage onWhite = OnWhite(image);
        const double dDifference = Difference(onWhite, OnWhite(m_drawing));
        QVERIFY2(dDifference < c_dAlike, QByteArray::number(dDifference));
    }

private:
    QImage m_drawing;
};

QTEST_MAIN(tst_Pictures)

#include "tst_Pictures.moc"

// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "GoldenTable.h"
#include "WindowTest.h"

#include <QApplication>
#include <QPainter>
#include <QProcess>
#include <QScopeGuard>
#include <QSet>
#include <QStyle>
#include <QSystemTrayIcon>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int c_iSize = 64;      // at which pictures are compared
constexpr double c_dAlike = 8.0; // of 255, mean difference of a colour; another motif is many times as far

std::vector<QRgb> Pixels(const QImage& image)
{
    std::vector<QRgb> listPixel;
    for (int i = 0; i < image.width() * image.height(); ++i) {
        listPixel.push_back(image.pixel(i % image.width(), i / image.width()));
    }
    return listPixel;
}

double Linear(int iValue)
{
    const double dValue = iValue / 255.0;
    return dValue <= 0.03928 ? dValue / 12.92 : std::pow((dValue + 0.055) / 1.055, 2.4);
}

double Luminance(QRgb colour)
{
    return 0.2126 * Linear(qRed(colour)) + 0.7152 * Linear(qGreen(colour)) + 0.0722 * Linear(qBlue(colour));
}

/// Of the lightest and the darkest pixel, as WCAG defines it: 1 to 21.
double Contrast(const QPixmap& pixmap)
{
    const std::vector<QRgb> listPixel = Pixels(pixmap.toImage());
    const auto [dark, light] = std::minmax_element(
        listPixel.begin(), listPixel.end(), [](QRgb left, QRgb right) { return Luminance(left) < Luminance(right); });
    return (Luminance(*light) + 0.05) / (Luminance(*dark) + 0.05);
}

QPalette Palette(QColor back, QColor fore)
{
    QPalette palette(back, back);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::Highlight}) {
        palette.setColor(role, fore);
    }
    palette.setColor(QPalette::Base, back);
    palette.setColor(QPalette::HighlightedText, back);
    return palette;
}

/// The picture on white, so that what is transparent has a colour too.
QImage OnWhite(const QImage& picture)
{
    QImage scaled = picture.scaled(c_iSize, c_iSize, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    scaled.setDevicePixelRatio(1);
    QImage image(c_iSize, c_iSize, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter(&image).drawImage(0, 0, scaled);
    return image;
}

double Difference(const QImage& left, const QImage& right)
{
    const std::vector<QRgb> listLeft = Pixels(left);
    const std::vector<QRgb> listRight = Pixels(right);
    double dSum = 0;
    for (std::size_t i = 0; i < listLeft.size(); ++i) {
        dSum += std::abs(qRed(listLeft[i]) - qRed(listRight[i])) +
                std::abs(qGreen(listLeft[i]) - qGreen(listRight[i])) +
                std::abs(qBlue(listLeft[i]) - qBlue(listRight[i]));
    }
    return dSum / (3.0 * c_iSize * c_iSize);
}

} // namespace

/// Texts and pictures, with the colours and the scale that a user's desktop sets.
class tst_Looks : public WindowTest
{
    Q_OBJECT

private slots:
    void cleanup() { m_pWindow.reset(); }

    void textsCanBeRead_data()
    {
        QTest::addColumn<QPalette>("palette");
        QTest::newRow("light") << QApplication::palette();
        QTest::newRow("dark") << Palette(QColor(0x2B, 0x2B, 0x2B), QColor(0xE6, 0xE6, 0xE6));
        QTest::newRow("high contrast") << Palette(Qt::black, Qt::yellow);
        QTest::newRow("high contrast, inverse") << Palette(Qt::white, Qt::black);
    }

    void textsCanBeRead()
    {
        QFETCH(QPalette, palette);
        const QPalette old = QApplication::palette();
        const auto restore = qScopeGuard([&] {
            m_pWindow.reset();
            QApplication::setPalette(old);
        });
        QApplication::setPalette(palette);
        ShowWindow();
        ShowPrinters(*m_pWindow, {MakePrinter(u"Office"_s), MakePrinter(u"Lab"_s)});
        for (const bool bSelected : {false, true}) {
            for (int iColumn = 0; iColumn < 4; ++iColumn) {
                Table()->item(1, iColumn)->setSelected(bSelected);
                const QRect cell = Table()->visualItemRect(Table()->item(1, iColumn)).adjusted(3, 3, -3, -3);
                // The colours of what is selected are the desktop's own, the theme's white on light blue among them.
                QVERIFY2(Contrast(Table()->viewport()->grab(cell)) >= (bSelected ? 3 : 4.5),
                         qPrintable(QString::number(iColumn)));
            }
        }
        QVERIFY(Contrast(m_pWindow->grab(QRect(45, 25, 110, 15))) >= 4.5); // a header

        for (const char* pName : {"checkBoxAutoStart", "pushButtonOK", "pushButtonCancel"}) {
            auto* pWidget = m_pWindow->m_pAppSetting->findChild<QWidget*>(QLatin1String(pName));
            QVERIFY2(Contrast(pWidget->grab(QRect(24, 4, 40, 17))) >= 4.5, pName);
        }
    }

    /// Each text without an error or a warning. That of the ink is widest when its longest word stands four times.
    void textsFitTheirColumns()
    {
        ShowWindow();
        stPrinterState state;
        for (const unsigned long dwLevel : {0UL, 10UL, 30UL, 50UL, 100UL}) {
            state.dwBlueInkRemainer = state.dwRedInkRemainer = dwLevel;
            state.dwYellowInkRemainer = state.dwBlackInkRemainer = dwLevel;
            ReportState(*m_pWindow, state);
            QVERIFY2(Spare(2) >= 0, qPrintable(Cell(0, 2)));
        }
        QVERIFY(!GoldenStates().isEmpty());
        for (const stGoldenCode& code : GoldenStates()) {
            state.enCurrentStatus = code.iValue;
            ReportState(*m_pWindow, state);
            QCOMPARE(Cell(0, 3), code.strChinese);
            QVERIFY2(Spare(3) >= 0, qPrintable(Cell(0, 3)));
        }
    }

    /// The scalable picture, which the library that desktops use renders, and those of resource, window and tray.
    void picturesShowOneMotif()
    {
        const QString strPath = u"/tmp/drawing.png"_s;
        const QString strSide = QString::number(c_iSize);
        QCOMPARE(QProcess::execute(u"rsvg-convert"_s, {u"-w"_s, strSide, u"-h"_s, strSide, u"-o"_s, strPath,
                                                       QStringLiteral(VORA_DRAWING)}),
                 0);
        QCOMPARE(qAlpha(QImage(strPath).pixel(0, 0)), 0); // nor white on a dark panel
        const QImage drawing = OnWhite(QImage(strPath));
        const std::vector<QRgb> listPixel = Pixels(drawing);
        QVERIFY(QSet<QRgb>(listPixel.begin(), listPixel.end()).size() > 50);
        QImage plain = drawing;
        plain.fill(Qt::white);
        QVERIFY(Difference(drawing, plain) > 5 * c_dAlike);          // neither empty
        QVERIFY(Difference(drawing, drawing.mirrored()) > c_dAlike); // nor one shape that could be any

        MakeWindow();
        for (const QImage& image :
             {QImage(u":/Icon/Resource/Vora.png"_s), m_pWindow->windowIcon().pixmap(c_iSize).toImage(),
              m_pWindow->m_pTrayIcon->icon().pixmap(c_iSize).toImage()}) {
            QVERIFY(image.width() >= c_iSize); // not blown up on any display
            QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
            const double dDifference = Difference(OnWhite(image), drawing);
            QVERIFY2(dDifference < c_dAlike, QByteArray::number(dDifference));
        }
        for (const int iSize : {16, 22, 24, 32, 44, 48, 64}) { // sharp: as many pixels as the scale asks for
            const QPixmap pixmap = m_pWindow->m_pTrayIcon->icon().pixmap(QSize(iSize, iSize));
            // Qt 5 draws icons without the scale and stretches them.
            const qreal dRatio = QT_VERSION_MAJOR > 5 ? qGuiApp->devicePixelRatio() : pixmap.devicePixelRatio();
            QCOMPARE(pixmap.size(), QSize(iSize, iSize) * dRatio);
        }
    }

private:
    void ShowWindow()
    {
        MakeWindow();
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
    }

    /// The pixels that the first row's text leaves of its column, without margins and grid.
    int Spare(int iColumn) const
    {
        const int iMargin = Table()->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, Table()) + 1;
        return Table()->columnWidth(iColumn) - 1 - 2 * iMargin -
               Table()->fontMetrics().horizontalAdvance(Cell(0, iColumn));
    }
};

QTEST_MAIN(tst_Looks)

#include "tst_Looks.moc"

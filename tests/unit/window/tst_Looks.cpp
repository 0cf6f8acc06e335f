// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "WindowTest.h"

#include <QApplication>
#include <QImage>
#include <QScopeGuard>
#include <QSystemTrayIcon>
#include <QtTest>

#include <algorithm>
#include <cmath>

namespace {

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
double Contrast(const QImage& image)
{
    double dMin = 1;
    double dMax = 0;
    for (int iY = 0; iY < image.height(); ++iY) {
        for (int iX = 0; iX < image.width(); ++iX) {
            const double dLuminance = Luminance(image.pixel(iX, iY));
            dMin = std::min(dMin, dLuminance);
            dMax = std::max(dMax, dLuminance);
        }
    }
    return (dMax + 0.05) / (dMin + 0.05);
}

QPalette Palette(QColor back, QColor fore)
{
    QPalette palette(back, back);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, fore);
    }
    palette.setColor(QPalette::Base, back);
    palette.setColor(QPalette::Highlight, fore);
    palette.setColor(QPalette::HighlightedText, back);
    return palette;
}

} // namespace

/// Colours and sizes that a user's desktop sets.
class tst_Looks : public WindowTest
{
    Q_OBJECT

private slots:
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
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        StopListWorker(*m_pWindow);
        ShowPrinters(*m_pWindow, {MakePrinter(u"Office"_s), MakePrinter(u"Lab"_s)});
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
        for (const bool bSelected : {false, true}) {
            for (int iColumn = 0; iColumn < 4; ++iColumn) {
                Table()->item(1, iColumn)->setSelected(bSelected);
                const QRect cell = Table()->visualItemRect(Table()->item(1, iColumn)).adjusted(3, 3, -3, -3);
                // The colours of what is selected are the desktop's own, the theme's white on light blue among them.
                QVERIFY2(Contrast(Table()->viewport()->grab(cell).toImage()) >= (bSelected ? 3 : 4.5),
                         qPrintable(QString::number(iColumn)));
            }
        }
        const QImage header = m_pWindow->grab(QRect(45, 25, 110, 15)).toImage();
        QVERIFY(Contrast(header) >= 4.5);

        for (const char* pName : {"checkBoxAutoStart", "pushButtonOK", "pushButtonCancel"}) {
            auto* pWidget = m_pWindow->m_pAppSetting->findChild<QWidget*>(QLatin1String(pName));
            QVERIFY2(Contrast(pWidget->grab(QRect(24, 4, 40, 17)).toImage()) >= 4.5, pName);
        }
    }

    /// As many pixels as the scale asks for, not fewer that are stretched.
    void iconIsSharp()
    {
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        const auto close = qScopeGuard([this] { m_pWindow.reset(); });
        for (const int iSize : {16, 22, 24, 32, 44, 48, 64}) {
            const QPixmap pixmap = m_pWindow->m_pTrayIcon->icon().pixmap(QSize(iSize, iSize));
            QCOMPARE(pixmap.size(), QSize(iSize, iSize) * pixmap.devicePixelRatio());
        }
    }
};

QTEST_MAIN(tst_Looks)

#include "tst_Looks.moc"

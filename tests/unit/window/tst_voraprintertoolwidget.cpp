// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "WindowTest.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QTranslator>
#include <QtTest>

namespace {

/// Keeps what it was asked to translate, as "context: text".
class RecordingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char* pContext, const char* pText, const char*, int) const override
    {
        m_listAsked.append(QLatin1String(pContext) + u": "_s + QLatin1String(pText));
        return QString();
    }

    mutable QStringList m_listAsked;
};

/// Told by the base class of a widget whose font changes.
class Layout : public QHBoxLayout
{
public:
    void invalidate() override { ++m_iCount; }

    int m_iCount = 0;
};

} // namespace

class tst_voraprintertoolwidget : public WindowTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QTRY_VERIFY(QSystemTrayIcon::isSystemTrayAvailable()); }

    void init()
    {
        QDir(u"/opt/vora"_s).removeRecursively();
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
    }

    void cleanup() { m_pWindow.reset(); }

    void signalsAndSlotsHaveTheirOrder()
    {
        QCOMPARE(MethodsOf(VoraPrinterToolWidget::staticMetaObject),
                 QStringList({u"signal SgnManageThreadStart()"_s, u"signal SgnStatusThreadStart()"_s,
                              u"signal SgnThreadQuit()"_s,
                              u"slot SlotActivatedTrayIcon(QSystemTrayIcon::ActivationReason)"_s,
                              u"slot SlotTrayActionShow()"_s, u"slot SlotTrayActionUpdateFW()"_s,
                              u"slot SlotTrayActionSetting()"_s, u"slot SlotTrayActionExit()"_s,
                              u"slot SlotUpdatePrinterStatus(int)"_s, u"slot SlotUpdatePrinterList()"_s}));
    }

    void windowIsFixedAndCentred()
    {
        CheckFixedWindow(*m_pWindow, "VoraPrinterToolWidget", u"星原喷墨打印机助手"_s, QSize(860, 300));
        QCOMPARE(Table()->parent(), m_pWindow.get());
        QCOMPARE(Table()->geometry(), QRect(20, 20, 820, 260));
    }

    void formTextsPassThroughTranslation()
    {
        RecordingTranslator translator;
        QCoreApplication::installTranslator(&translator);
        const VoraPrinterToolWidget window;
        QCoreApplication::removeTranslator(&translator);
        for (const char* pText : {"VoraPrinterToolWidget: VoraPrinterToolWidget", "AppSetting: Form",
                                  "AppSetting: AutoStart", "AppSetting: OK", "AppSetting: Cancel"}) {
            QVERIFY2(translator.m_listAsked.contains(QLatin1String(pText)), pText);
        }
    }

    void newWindowHasItsPartsAndEmptyLists()
    {
        QVERIFY(m_pWindow->m_pAppSetting->isHidden());
        QCOMPARE(m_pWindow->m_pAppSetting->parent(), nullptr);
        QVERIFY(m_pWindow->m_listTrdGetPrinterStatus.isEmpty());
        QVERIFY(m_pWindow->m_listStatusThread.isEmpty());
        QCOMPARE(m_pWindow->m_iStatusThreadCount, 0);
        QCOMPARE(m_pWindow->m_iLanguage, 1);
    }

    void listWorkerRunsInItsThread()
    {
        TrdDeviceManage* pWorker = m_pWindow->m_pTrdDeviceManage;
        QCOMPARE(pWorker->parent(), nullptr);
        QCOMPARE(m_pWindow->m_pManageThread->parent(), nullptr);
        QCOMPARE(pWorker->thread(), m_pWindow->m_pManageThread);
        QCOMPARE(m_pWindow->m_pManageThread->objectName(), u"vora-devices"_s);
        QVERIFY(m_pWindow->m_pManageThread->isRunning());
        QCOMPARE(pWorker->m_pListPrinterManager, &m_pWindow->m_listPrinterManager);
        CheckStart(*pWorker, *m_pWindow);
    }

    void closingHidesTheWindowAndKeepsTheTrayIcon()
    {
        m_pWindow->show();
        QVERIFY(IsHiddenByClosing(*m_pWindow));
        QVERIFY(m_pWindow->m_pTrayIcon->isVisible());
    }

    void changeEventDoesNothing()
    {
        QWidget plain;
        for (QWidget* pWidget : {&plain, static_cast<QWidget*>(m_pWindow.get())}) {
            auto* pLayout = new Layout;
            pWidget->setLayout(pLayout);
            pLayout->m_iCount = 0;
            QEvent event(QEvent::FontChange);
            QCoreApplication::sendEvent(pWidget, &event);
            QCOMPARE(pLayout->m_iCount, pWidget == &plain ? 1 : 0);
        }
    }

    void trayIconHasItsMenu()
    {
        const QSystemTrayIcon* pIcon = m_pWindow->m_pTrayIcon;
        QVERIFY(pIcon->isVisible());
        QCOMPARE(pIcon->parent(), m_pWindow.get());
        QCOMPARE(pIcon->toolTip(), u"星原喷墨打印机助手"_s);
        const QMenu* pMenu = pIcon->contextMenu();
        QCOMPARE(pMenu, m_pWindow->m_pTrayMenu);
        QCOMPARE(pMenu->parent(), m_pWindow.get());
        QCOMPARE(pMenu->actions(), QList<QAction*>({m_pWindow->m_pActionShow, m_pWindow->m_pActionUpdateFW,
                                                    m_pWindow->m_pActionSetting, m_pWindow->m_pActionExit}));
        QStringList listText;
        for (const QAction* pAction : pMenu->actions()) {
            QCOMPARE(pAction->parent(), m_pWindow.get());
            listText.append(pAction->text());
        }
        QCOMPARE(listText, QStringList({u"显示主界面"_s, u"打印机更新助手"_s, u"设置"_s, u"退出"_s}));
    }

    void clickShowsTheWindow_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<bool>("minimised");
        QTest::newRow("hidden") << false << false;
        QTest::newRow("behind another window") << true << false;
        QTest::newRow("minimised") << true << true;
    }

    /// And does nothing more.
    void clickShowsTheWindow()
    {
        QFETCH(bool, shown);
        QFETCH(bool, minimised);
        if (shown) {
            m_pWindow->show();
            QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
            const Qt::WindowFlags flags = m_pWindow->windowFlags();
            Activate(QSystemTrayIcon::Trigger);
            QVERIFY(m_pWindow->isVisible());
            QCOMPARE(m_pWindow->windowFlags(), flags);
            QVERIFY(!flags.testFlag(Qt::WindowMaximizeButtonHint));
        }
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        if (minimised) {
            m_pWindow->showMinimized();
            QTRY_VERIFY(m_pWindow->isMinimized());
        }
        Activate(QSystemTrayIcon::Trigger);
        QTRY_VERIFY(m_pWindow->isActiveWindow());
        QVERIFY(m_pWindow->isVisible());
        QVERIFY(!m_pWindow->isMinimized());
    }

    void otherActivationsDoNothing()
    {
        for (const auto enReason : {QSystemTrayIcon::Unknown, QSystemTrayIcon::Context, QSystemTrayIcon::DoubleClick,
                                    QSystemTrayIcon::MiddleClick}) {
            Activate(enReason);
            QVERIFY(m_pWindow->isHidden());
            QVERIFY(m_pWindow->m_pAppSetting->isHidden());
        }
    }

    void showEntrySetsTheFlagsOfAPlainWindow()
    {
        // The toolkit adds the hints of a plain window by itself.
        QWidget plain;
        plain.setWindowFlags(Qt::Window);
        m_pWindow->setWindowFlag(Qt::WindowStaysOnTopHint);
        m_pWindow->m_pActionShow->trigger();
        QVERIFY(m_pWindow->isVisible());
        QCOMPARE(m_pWindow->windowFlags(), plain.windowFlags());
        QVERIFY(m_pWindow->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
        QCOMPARE(m_pWindow->minimumSize(), QSize(860, 300));
        QCOMPARE(m_pWindow->maximumSize(), QSize(860, 300));
    }

    void settingsEntryShowsTheSettingsAlone()
    {
        m_pWindow->m_pActionSetting->trigger();
        QVERIFY(m_pWindow->m_pAppSetting->isVisible());
        QVERIFY(m_pWindow->isHidden());
    }

private:
    void Activate(QSystemTrayIcon::ActivationReason enReason) { emit m_pWindow->m_pTrayIcon->activated(enReason); }
};

QTEST_MAIN(tst_voraprintertoolwidget)

#include "tst_voraprintertoolwidget.moc"

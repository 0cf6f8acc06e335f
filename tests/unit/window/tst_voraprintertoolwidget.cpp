// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "WindowTest.h"

#include <QMenu>
#include <QMetaMethod>
#include <QPointer>
#include <QProcess>
#include <QScreen>
#include <QSignalSpy>
#include <QTableWidget>
#include <QtTest>

#include <memory>

namespace {

/// What a user does with mouse and keyboard.
bool Desktop(const QStringList& listArgument)
{
    return QProcess::execute(u"xdotool"_s, listArgument) == 0;
}

class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        m_iCount += pEvent->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

    int m_iCount = 0;
};

} // namespace

class tst_voraprintertoolwidget : public QObject
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
        const QMetaObject& meta = VoraPrinterToolWidget::staticMetaObject;
        QStringList listMethod;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const QMetaMethod method = meta.method(i);
            QCOMPARE(method.access(), QMetaMethod::Public);
            listMethod.append((method.methodType() == QMetaMethod::Signal ? u"signal "_s : u"slot "_s) +
                              QString::fromLatin1(method.methodSignature()));
        }
        QCOMPARE(listMethod, QStringList({u"signal SgnManageThreadStart()"_s, u"signal SgnStatusThreadStart()"_s,
                                          u"signal SgnThreadQuit()"_s,
                                          u"slot SlotActivatedTrayIcon(QSystemTrayIcon::ActivationReason)"_s,
                                          u"slot SlotTrayActionShow()"_s, u"slot SlotTrayActionUpdateFW()"_s,
                                          u"slot SlotTrayActionSetting()"_s, u"slot SlotTrayActionExit()"_s,
                                          u"slot SlotUpdatePrinterStatus(int)"_s, u"slot SlotUpdatePrinterList()"_s}));
    }

    void windowIsFixedAndCentred()
    {
        QCOMPARE(m_pWindow->objectName(), u"VoraPrinterToolWidget"_s);
        QCOMPARE(m_pWindow->windowTitle(), u"星原喷墨打印机助手"_s);
        QVERIFY(m_pWindow->isWindow());
        QCOMPARE(m_pWindow->minimumSize(), QSize(860, 300));
        QCOMPARE(m_pWindow->maximumSize(), QSize(860, 300));
        m_pWindow->resize(1000, 500);
        QCOMPARE(m_pWindow->size(), QSize(860, 300));
        QCOMPARE(QGuiApplication::primaryScreen()->virtualSize(),
                 QSize(1280, 800)); // what the position is reckoned from
        QCOMPARE(m_pWindow->pos(), QPoint(210, 250));
        const QImage icon = QIcon(u":/Icon/Resource/Vora.png"_s).pixmap(32).toImage();
        QVERIFY(!icon.isNull());
        QCOMPARE(m_pWindow->windowIcon().pixmap(32).toImage(), icon);
    }

    void windowHasNoMaximiseButton()
    {
        QCOMPARE(m_pWindow->windowFlags(), QWidget().windowFlags() & ~Qt::WindowMaximizeButtonHint);
    }

    void formHasItsTable()
    {
        const auto* pTable = m_pWindow->findChild<QTableWidget*>(u"tableDeviceManage"_s, Qt::FindDirectChildrenOnly);
        QVERIFY(pTable != nullptr);
        QCOMPARE(pTable->geometry(), QRect(20, 20, 820, 260));
    }

    void formTitlePassesThroughTranslation()
    {
        RecordingTranslator translator;
        QCoreApplication::installTranslator(&translator);
        const VoraPrinterToolWidget window;
        QCoreApplication::removeTranslator(&translator);
        QVERIFY(translator.m_listAsked.contains(u"VoraPrinterToolWidget: VoraPrinterToolWidget"_s));
    }

    void newWindowIsHiddenWithSettingsAndEmptyLists()
    {
        QVERIFY(m_pWindow->isHidden());
        QVERIFY(m_pWindow->m_pAppSetting->isHidden());
        QVERIFY(m_pWindow->m_pAppSetting->parent() == nullptr);
        QVERIFY(m_pWindow->m_listTrdGetPrinterStatus.isEmpty());
        QVERIFY(m_pWindow->m_listStatusThread.isEmpty());
        QCOMPARE(m_pWindow->m_iStatusThreadCount, 0);
        QCOMPARE(m_pWindow->m_iLanguage, 1);
    }

    void workersHaveNoParentAndTheirOwnThread()
    {
        QVERIFY(m_pWindow->m_pTrdDeviceManage->parent() == nullptr);
        QVERIFY(m_pWindow->m_pManageThread->parent() == nullptr);
        QCOMPARE(m_pWindow->m_pTrdDeviceManage->thread(), m_pWindow->m_pManageThread);
        QVERIFY(m_pWindow->m_pManageThread->isRunning());
        QCOMPARE(m_pWindow->m_pTrdDeviceManage->m_pListPrinterManager, &m_pWindow->m_listPrinterManager);
    }

    void constructionStartsTheListWorker()
    {
        QVERIFY(WasTaskStarted(*m_pWindow->m_pTrdDeviceManage));
        m_pWindow->m_pTrdDeviceManage->m_bThreadQuit = false;
        emit m_pWindow->SgnThreadQuit(); // reaches a worker without a loop
        QTRY_VERIFY(m_pWindow->m_pTrdDeviceManage->m_bThreadQuit);
    }

    void closingHidesTheWindowAndKeepsTheTrayIcon()
    {
        m_pWindow->setAttribute(Qt::WA_DeleteOnClose); // an accepted close event would destroy the window
        const QPointer<QObject> pAlive(m_pWindow.get());
        m_pWindow->show();
        QVERIFY(!m_pWindow->close());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!pAlive.isNull());
        QVERIFY(m_pWindow->isHidden());
        QVERIFY(m_pWindow->m_pTrayIcon->isVisible());
    }

    void closeButtonOfTheDesktopHidesTheWindow()
    {
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
        QCOMPARE(QProcess::execute(u"wmctrl"_s, {u"-i"_s, u"-c"_s, QString::number(m_pWindow->winId())}), 0);
        QTRY_VERIFY(m_pWindow->isHidden());
        QVERIFY(m_pWindow->m_pTrayIcon->isVisible());
    }

    void changeEventDoesNothing()
    {
        // The base class draws a window anew when its font changes.
        QWidget plain;
        plain.setGeometry(0, 0, 100, 100); // beside the window
        plain.show();
        QVERIFY(QTest::qWaitForWindowActive(&plain));
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
        PaintCounter plainPaints(plain);
        PaintCounter windowPaints(*m_pWindow);
        QEvent event(QEvent::FontChange);
        for (int i = 0; i < 3; ++i) { // what was still to be drawn from the showing is drawn
            plainPaints.m_iCount = 0;
            QCoreApplication::sendEvent(&plain, &event);
            QTRY_VERIFY(plainPaints.m_iCount > 0);
        }
        plainPaints.m_iCount = 0;
        windowPaints.m_iCount = 0;
        QCoreApplication::sendEvent(m_pWindow.get(), &event);
        QCoreApplication::sendEvent(&plain, &event);
        QTRY_VERIFY(plainPaints.m_iCount > 0);
        QCOMPARE(windowPaints.m_iCount, 0);
    }

    void trayIconHasIconAndToolTip()
    {
        QVERIFY(m_pWindow->m_pTrayIcon->isVisible());
        QCOMPARE(m_pWindow->m_pTrayIcon->parent(), m_pWindow.get());
        QCOMPARE(m_pWindow->m_pTrayIcon->toolTip(), u"星原喷墨打印机助手"_s);
        const QImage icon = QIcon(u":/Icon/Resource/Vora.png"_s).pixmap(32).toImage();
        QCOMPARE(m_pWindow->m_pTrayIcon->icon().pixmap(32).toImage(), icon);
    }

    void trayMenuHasItsEntriesInOrder()
    {
        const QMenu* pMenu = m_pWindow->m_pTrayIcon->contextMenu();
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

    void trayMenuOpensOnRightClick()
    {
        ClickTrayIcon(u"3"_s);
        QTRY_VERIFY(m_pWindow->m_pTrayMenu->isVisible());
        QVERIFY(m_pWindow->isHidden());
        m_pWindow->m_pTrayMenu->close();
    }

    void clickOnTheTrayIconShowsTheHiddenWindow()
    {
        ClickTrayIcon(u"1"_s);
        QTRY_VERIFY(m_pWindow->isVisible());
        QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
    }

    void triggerShowsTheWindow_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::addColumn<bool>("minimised");
        QTest::newRow("hidden") << false << false;
        QTest::newRow("behind another window") << true << false;
        QTest::newRow("minimised") << true << true;
    }

    void triggerShowsTheWindow()
    {
        QFETCH(bool, shown);
        QFETCH(bool, minimised);
        if (shown) {
            m_pWindow->show();
            QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
        }
        QWidget other;
        other.show();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        if (minimised) {
            m_pWindow->showMinimized();
            QTRY_VERIFY(m_pWindow->isMinimized());
        }
        m_pWindow->SlotActivatedTrayIcon(QSystemTrayIcon::Trigger);
        QTRY_VERIFY(m_pWindow->isActiveWindow());
        QVERIFY(m_pWindow->isVisible());
        QVERIFY(!m_pWindow->isMinimized());
    }

    void triggerOnTheActiveWindowDoesNothing()
    {
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
        const Qt::WindowFlags flags = m_pWindow->windowFlags();
        m_pWindow->SlotActivatedTrayIcon(QSystemTrayIcon::Trigger);
        QVERIFY(m_pWindow->isVisible());
        QCOMPARE(m_pWindow->windowFlags(), flags);
        QVERIFY(!flags.testFlag(Qt::WindowMaximizeButtonHint));
    }

    void otherActivationsDoNothing_data()
    {
        QTest::addColumn<int>("reason");
        QTest::newRow("unknown") << int{QSystemTrayIcon::Unknown};
        QTest::newRow("context") << int{QSystemTrayIcon::Context};
        QTest::newRow("double click") << int{QSystemTrayIcon::DoubleClick};
        QTest::newRow("middle click") << int{QSystemTrayIcon::MiddleClick};
    }

    void otherActivationsDoNothing()
    {
        QFETCH(int, reason);
        emit m_pWindow->m_pTrayIcon->activated(static_cast<QSystemTrayIcon::ActivationReason>(reason));
        QVERIFY(m_pWindow->isHidden());
        QVERIFY(m_pWindow->m_pAppSetting->isHidden());
    }

    void showingSetsTheFlagsToPlainWindow()
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
        QVERIFY(!m_pWindow->m_pAppSetting->isModal());
        QVERIFY(m_pWindow->isHidden());
    }

private:
    void ClickTrayIcon(const QString& strButton)
    {
        QTRY_VERIFY(m_pWindow->m_pTrayIcon->geometry().top() > 0); // the tray has given the icon its place
        const QPoint centre = m_pWindow->m_pTrayIcon->geometry().center();
        QVERIFY(
            Desktop({u"mousemove"_s, QString::number(centre.x()), QString::number(centre.y()), u"click"_s, strButton}));
    }

    std::unique_ptr<VoraPrinterToolWidget> m_pWindow;
};

QTEST_MAIN(tst_voraprintertoolwidget)

#include "tst_voraprintertoolwidget.moc"

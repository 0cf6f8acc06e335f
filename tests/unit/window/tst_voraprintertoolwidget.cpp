// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "WindowTest.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QTranslator>
#include <QtTest>

#include <sys/stat.h>

namespace {

const QString c_strTree = u"/tmp/tree/"_s;
const QString c_strNeighbour = u"neighbour"_s;
const QString c_strCalls = u"/tmp/update-calls"_s;

unsigned Mode(const QString& strName)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(c_strTree + strName).constData(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

/// Files, or folders when the name ends with a slash, that their owner alone may use.
void Make(const QStringList& listName)
{
    for (const QString& strName : listName) {
        const QString strPath = c_strTree + strName;
        const bool bFolder = strName.endsWith(QLatin1Char('/'));
        QVERIFY(bFolder ? QDir().mkpath(strPath) : WriteFile(strPath, "x"));
        QCOMPARE(::chmod(QFile::encodeName(strPath).constData(), bFolder ? 0700 : 0600), 0);
    }
}

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
        QDir(c_strTree).removeRecursively();
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

    void newWindowHasItsParts()
    {
        QVERIFY(m_pWindow->m_pAppSetting->isHidden());
        QCOMPARE(m_pWindow->m_pAppSetting->parent(), nullptr);
        QCOMPARE(m_pWindow->m_iLanguage, 1);
        TrdDeviceManage* pWorker = m_pWindow->m_pTrdDeviceManage;
        QCOMPARE(pWorker->parent(), nullptr);
        QCOMPARE(m_pWindow->m_pManageThread->parent(), nullptr);
        QCOMPARE(pWorker->thread(), m_pWindow->m_pManageThread);
        QCOMPARE(m_pWindow->m_pManageThread->objectName(), u"vora-devices"_s);
        QVERIFY(m_pWindow->m_pManageThread->isRunning());
        QCOMPARE(m_pWindow->m_pManageThread->priority(), QThread::InheritPriority); // a busy machine starves lower ones
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

    /// Each time, without waiting for it.
    void updateEntryStartsTheTool()
    {
        QVERIFY(WriteScript(u"/opt/vora/vora-printer-k507/bin/voraK507FW"_s,
                            "echo \"$# $PWD\" >> /tmp/update-calls\n"
                            "while [ ! -e /tmp/update-go ]; do sleep 0.05; done\n"
                            "echo ended >> /tmp/update-calls\n"));
        const QByteArray started = "0 " + QDir::currentPath().toUtf8() + '\n';
        m_pWindow->m_pActionUpdateFW->trigger();
        m_pWindow->m_pActionUpdateFW->trigger();
        QTRY_COMPARE(ReadFile(c_strCalls), started + started);
        m_pWindow.reset(); // the tool outlives the program
        QVERIFY(WriteFile(u"/tmp/update-go"_s, "go"));
        QTRY_COMPARE(ReadFile(c_strCalls), started + started + "ended\nended\n");
    }

    void missingFilesAreNoMatter()
    {
        m_pWindow->m_pActionUpdateFW->trigger();
        m_pWindow->ChmodFile(c_strTree + u"missing"_s);
        m_pWindow->ChmodVendorPath(c_strTree + u"missing"_s);
        QCoreApplication::processEvents();
        QVERIFY(!QFile::exists(c_strTree));
        QVERIFY(m_pWindow->isHidden());
        QVERIFY(m_pWindow->m_pTrayIcon->isVisible());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void chmodFileOpensOneFile()
    {
        for (const QString& strName : {u".hidden"_s, u"it's \"quoted\"; $(chmod 777 neighbour) 打印机"_s, u"*"_s}) {
            Make({strName, c_strNeighbour});
            m_pWindow->ChmodFile(c_strTree + strName);
            QCOMPARE(Mode(strName), 0777U);
            QCOMPARE(Mode(c_strNeighbour), 0600U);
        }
    }

    /// The shell's pattern does not name hidden entries; what a link leads to is changed, but no linked folder entered.
    void chmodVendorPathOpensTheTree()
    {
        const QString strOdd = u"root/it's \"two\" words/$(chmod 777 neighbour)/"_s;
        const QStringList listOpened = {
            u"root/"_s,     u"root/a"_s,        u"root/empty/"_s,         u"root/one/two/three/d"_s,
            u"root/one/"_s, u"root/one/two/"_s, u"root/one/two/three/"_s, strOdd + u"-R; *"_s,
            strOdd,         u"outside/"_s};
        const QStringList listClosed = {c_strNeighbour, u"root/.f"_s, u"root/.folder/g"_s, u"outside/inner"_s};
        Make(listOpened + listClosed);
        QVERIFY(QFile::link(c_strTree + u"outside"_s, c_strTree + u"root/link"_s));
        QCOMPARE(::chmod("/tmp/tree", 0700), 0);
        m_pWindow->ChmodVendorPath(c_strTree + u"root"_s);
        for (const QString& strName : listOpened) {
            QVERIFY2(Mode(strName) == 0777U, qPrintable(strName));
        }
        for (const QString& strName : listClosed) {
            QVERIFY2(Mode(strName) == 0600U, qPrintable(strName));
        }
        QCOMPARE(Mode(QString()), 0700U);
    }

private:
    void Activate(QSystemTrayIcon::ActivationReason enReason) { emit m_pWindow->m_pTrayIcon->activated(enReason); }
};

QTEST_MAIN(tst_voraprintertoolwidget)

#include "tst_voraprintertoolwidget.moc"

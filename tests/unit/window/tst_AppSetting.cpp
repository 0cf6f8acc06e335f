// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "TestFiles.h"
#include "WindowTest.h"

#include <QCheckBox>
#include <QMetaMethod>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QtTest>

#include <csignal>
#include <memory>

#include <sys/resource.h>

namespace {

const QString c_strEntry = u"vora-k507-tool-autostart.desktop"_s;
const QByteArray c_shipped = "[Desktop Entry]\nName=shipped\n";

} // namespace

class tst_AppSetting : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_strSource = QCoreApplication::applicationDirPath() + QLatin1Char('/') + c_strEntry;
        m_strFolder = QDir::homePath() + u"/.config/autostart"_s;
        m_strTarget = m_strFolder + QLatin1Char('/') + c_strEntry;
    }

    void init()
    {
        QDir(QDir::homePath() + u"/.config"_s).removeRecursively();
        QVERIFY(WriteFile(m_strSource, c_shipped));
        m_pWindow = std::make_unique<AppSetting>();
    }

    void cleanup()
    {
        m_pWindow.reset();
        QFile::remove(m_strSource);
    }

    void slotsHaveTheirOrder()
    {
        const QMetaObject& meta = AppSetting::staticMetaObject;
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 2);
        QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), QByteArray("on_pushButtonOK_clicked()"));
        QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("on_pushButtonCancel_clicked()"));
        QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Slot);
    }

    void windowIsFixedAndCentred()
    {
        QCOMPARE(m_pWindow->objectName(), u"AppSetting"_s);
        QCOMPARE(m_pWindow->windowTitle(), u"设置"_s);
        QVERIFY(!m_pWindow->windowIcon().isNull());
        QVERIFY(m_pWindow->isWindow());
        QVERIFY(m_pWindow->isHidden());
        QCOMPARE(m_pWindow->windowModality(), Qt::NonModal);
        QCOMPARE(m_pWindow->minimumSize(), QSize(400, 300));
        QCOMPARE(m_pWindow->maximumSize(), QSize(400, 300));
        m_pWindow->resize(500, 500);
        QCOMPARE(m_pWindow->size(), QSize(400, 300));
        const QSize desktop = QGuiApplication::primaryScreen()->virtualSize();
        QCOMPARE(m_pWindow->pos(), QPoint((desktop.width() - 400) / 2, (desktop.height() - 300) / 2));
    }

    void windowHasNoMaximiseButton()
    {
        QCOMPARE(m_pWindow->windowFlags(), QWidget().windowFlags() & ~Qt::WindowMaximizeButtonHint);
    }

    void formHasItsWidgets_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<QRect>("geometry");
        QTest::addColumn<QString>("text");
        QTest::newRow("checkBoxAutoStart") << u"QCheckBox"_s << QRect(70, 60, 130, 25) << u"开机启动"_s;
        QTest::newRow("pushButtonOK") << u"QPushButton"_s << QRect(70, 250, 80, 25) << u"确定"_s;
        QTest::newRow("pushButtonCancel") << u"QPushButton"_s << QRect(250, 250, 80, 25) << u"取消"_s;
    }

    void formHasItsWidgets()
    {
        QFETCH(QString, className);
        QFETCH(QRect, geometry);
        QFETCH(QString, text);
        auto* pButton =
            m_pWindow->findChild<QAbstractButton*>(QLatin1String(QTest::currentDataTag()), Qt::FindDirectChildrenOnly);
        QVERIFY(pButton != nullptr);
        QCOMPARE(QLatin1String(pButton->metaObject()->className()), className);
        QCOMPARE(pButton->geometry(), geometry);
        QCOMPARE(pButton->text(), text);
    }

    void formTextsPassThroughTranslation()
    {
        RecordingTranslator translator;
        QCoreApplication::installTranslator(&translator);
        const AppSetting window;
        QCoreApplication::removeTranslator(&translator);
        for (const char* pText : {"Form", "AutoStart", "OK", "Cancel"}) {
            QVERIFY2(translator.m_listAsked.contains(u"AppSetting: "_s + QLatin1String(pText)), pText);
        }
    }

    void boxShowsWhetherTheFileExists_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("missing") << QByteArray();
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("not a desktop entry") << QByteArray("\0\xFFrubbish", 9);
        QTest::newRow("disabled entry") << QByteArray("[Desktop Entry]\nHidden=true\n");
    }

    void boxShowsWhetherTheFileExists()
    {
        QFETCH(QByteArray, content);
        QVERIFY(content.isNull() || WriteFile(m_strTarget, content));
        AppSetting window;
        QCOMPARE(window.ReadAutoStartOption(), !content.isNull());
        QCOMPARE(window.findChild<QCheckBox*>()->isChecked(), !content.isNull());
    }

    void openingShowsWhatIsThereByThen_data()
    {
        QTest::addColumn<bool>("there");
        QTest::newRow("made meanwhile") << true;
        QTest::newRow("removed meanwhile") << false;
    }

    void openingShowsWhatIsThereByThen()
    {
        QFETCH(bool, there);
        QVERIFY(there || WriteFile(m_strTarget, c_shipped));
        m_pWindow->InitOption();
        QVERIFY(there ? WriteFile(m_strTarget, c_shipped) : QFile::remove(m_strTarget));
        m_pWindow->setVisible(true);
        QCOMPARE(Box()->isChecked(), there);
    }

    void okCopiesTheShippedEntry()
    {
        m_pWindow->show();
        Box()->setChecked(true);
        QVERIFY(!QFile::exists(m_strTarget)); // nothing before OK
        Click("pushButtonOK");
        QVERIFY(m_pWindow->isHidden());
        QCOMPARE(ReadFile(m_strTarget), c_shipped);
        QVERIFY(Box()->isChecked());
    }

    void okKeepsAnExistingEntry()
    {
        QVERIFY(WriteFile(m_strTarget, "the user's own"));
        m_pWindow->InitOption();
        QVERIFY(Box()->isChecked());
        Click("pushButtonOK");
        QCOMPARE(ReadFile(m_strTarget), QByteArray("the user's own"));
        QVERIFY(Box()->isChecked());
    }

    void okRemovesTheEntry()
    {
        QVERIFY(WriteFile(m_strTarget, c_shipped));
        m_pWindow->InitOption();
        m_pWindow->show();
        Box()->setChecked(false);
        QVERIFY(QFile::exists(m_strTarget));
        Click("pushButtonOK");
        QVERIFY(m_pWindow->isHidden());
        QVERIFY(!QFile::exists(m_strTarget));
        QVERIFY(!Box()->isChecked());
        QVERIFY(QFile::exists(m_strSource));
    }

    void okOnAHalfCheckedBoxMeansOn()
    {
        Box()->setTristate(true);
        Box()->setCheckState(Qt::PartiallyChecked);
        Click("pushButtonOK");
        QVERIFY(QFile::exists(m_strTarget));
        QCOMPARE(Box()->checkState(), Qt::Checked);
    }

    void okWithoutAShippedEntryFallsBackToUnchecked()
    {
        QVERIFY(QFile::remove(m_strSource));
        m_pWindow->show();
        Box()->setChecked(true);
        Click("pushButtonOK");
        QVERIFY(m_pWindow->isHidden());
        QVERIFY(!QFile::exists(m_strTarget));
        QVERIFY(!Box()->isChecked());
    }

    void okInAnUnwritableFolderFallsBackToUnchecked()
    {
        QVERIFY(WriteFile(m_strFolder, "a file where the folder should be"));
        m_pWindow->show();
        Box()->setChecked(true);
        Click("pushButtonOK");
        QVERIFY(m_pWindow->isHidden());
        QCOMPARE(ReadFile(m_strFolder), QByteArray("a file where the folder should be"));
        QVERIFY(!Box()->isChecked());
    }

    void okInABadHomeTellsTheTruth_data()
    {
        QTest::addColumn<QByteArray>("home");
        QTest::addColumn<bool>("full");
        QTest::newRow("full") << qgetenv("HOME") << true;
        QTest::newRow("not there, and nowhere to make it") << QByteArray("/proc/home") << false;
        QTest::newRow("not there yet") << QByteArray("/tmp/home/new") << false;
    }

    /// A limit on the length of files is to a writer what a full file system is.
    void okInABadHomeTellsTheTruth()
    {
        QFETCH(QByteArray, home);
        QFETCH(bool, full);
        const QByteArray oldHome = qgetenv("HOME");
        rlimit oldLimit = {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &oldLimit), 0);
        const auto restore = qScopeGuard([&] {
            qputenv("HOME", oldHome);
            (void)::setrlimit(RLIMIT_FSIZE, &oldLimit);
        });
        qputenv("HOME", home);
        m_pWindow->show();
        Box()->setChecked(true);
        if (full) {
            (void)std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit = {0, oldLimit.rlim_max};
            QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        }
        Click("pushButtonOK");
        (void)::setrlimit(RLIMIT_FSIZE, &oldLimit);
        const QDir folder(QString::fromLocal8Bit(home) + u"/.config/autostart"_s);
        const bool bThere = ReadFile(folder.filePath(c_strEntry)) == c_shipped;
        QCOMPARE(bThere, home == "/tmp/home/new");
        QCOMPARE(Box()->isChecked(), bThere);
        // Neither a part of the file nor another beside it.
        QCOMPARE(folder.entryList(QDir::Files | QDir::Hidden), bThere ? QStringList{c_strEntry} : QStringList());
    }

    void configHomeDoesNotMoveTheEntry()
    {
        qputenv("XDG_CONFIG_HOME", "/tmp/elsewhere");
        const auto restore = qScopeGuard([] { qunsetenv("XDG_CONFIG_HOME"); });
        Box()->setChecked(true);
        Click("pushButtonOK");
        QCOMPARE(ReadFile(m_strTarget), c_shipped);
        QVERIFY(!QFile::exists(u"/tmp/elsewhere"_s));
    }

    void okAfterAFailedRemovalStaysChecked()
    {
        QVERIFY(WriteFile(m_strTarget + u"/inside"_s, "a folder, which a file's removal leaves alone"));
        m_pWindow->InitOption();
        m_pWindow->show();
        QVERIFY(Box()->isChecked());
        Box()->setChecked(false);
        Click("pushButtonOK");
        QVERIFY(m_pWindow->isHidden());
        QVERIFY(QFile::exists(m_strTarget));
        QVERIFY(Box()->isChecked());
    }

    void cancelRestoresTheBox_data()
    {
        QTest::addColumn<bool>("on");
        QTest::newRow("on") << true;
        QTest::newRow("off") << false;
    }

    void cancelRestoresTheBox()
    {
        QFETCH(bool, on);
        QVERIFY(!on || WriteFile(m_strTarget, "as before"));
        m_pWindow->InitOption();
        m_pWindow->show();
        Box()->setChecked(!on);
        Click("pushButtonCancel");
        QVERIFY(m_pWindow->isHidden());
        QCOMPARE(Box()->isChecked(), on);
        QCOMPARE(ReadFile(m_strTarget), on ? QByteArray("as before") : QByteArray());
    }

    void closingBehavesAsCancel_data() { cancelRestoresTheBox_data(); }

    void closingBehavesAsCancel()
    {
        QFETCH(bool, on);
        QVERIFY(!on || WriteFile(m_strTarget, "as before"));
        m_pWindow->InitOption();
        m_pWindow->setAttribute(Qt::WA_DeleteOnClose); // an accepted close event would destroy the window
        m_pWindow->show();
        Box()->setChecked(!on);
        const QPointer<AppSetting> pAlive(m_pWindow.get());
        QVERIFY(!m_pWindow->close());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!pAlive.isNull());
        QVERIFY(m_pWindow->isHidden());
        QCOMPARE(Box()->isChecked(), on);
        QCOMPARE(ReadFile(m_strTarget), on ? QByteArray("as before") : QByteArray());
    }

    void saveOptionFollowsItsArgument()
    {
        Box()->setChecked(false);
        m_pWindow->SaveAutoStartOption(true);
        QCOMPARE(ReadFile(m_strTarget), c_shipped);
        m_pWindow->SaveAutoStartOption(true);
        QCOMPARE(ReadFile(m_strTarget), c_shipped);
        Box()->setChecked(true);
        m_pWindow->SaveAutoStartOption(false);
        QVERIFY(!QFile::exists(m_strTarget));
        m_pWindow->SaveAutoStartOption(false); // nothing to remove
        QVERIFY(QFileInfo(m_strFolder).isDir());
    }

private:
    QCheckBox* Box() const { return m_pWindow->findChild<QCheckBox*>(u"checkBoxAutoStart"_s); }
    void Click(const char* pButton) const
    {
        QTest::mouseClick(m_pWindow->findChild<QPushButton*>(QLatin1String(pButton)), Qt::LeftButton);
    }

    QString m_strSource;
    QString m_strFolder;
    QString m_strTarget;
    std::unique_ptr<AppSetting> m_pWindow;
};

QTEST_MAIN(tst_AppSetting)

#include "tst_AppSetting.moc"

// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "WindowTest.h"

#include <QCheckBox>
#include <QPushButton>
#include <QtTest>

#include <csignal>

#include <sys/resource.h>

namespace {

const QString c_strEntry = u"vora-k507-tool-autostart.desktop"_s;
const QByteArray c_shipped = "[Desktop Entry]\nName=shipped\n";
const QByteArray c_own = "the user's own";
const QByteArray c_none; // no file

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
        qputenv("XDG_CONFIG_HOME", "/tmp/elsewhere"); // does not move the entry
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
        QCOMPARE(MethodsOf(AppSetting::staticMetaObject),
                 QStringList({u"slot on_pushButtonOK_clicked()"_s, u"slot on_pushButtonCancel_clicked()"_s}));
    }

    void windowIsFixedAndCentred()
    {
        CheckFixedWindow(*m_pWindow, "AppSetting", u"设置"_s, QSize(400, 300));
        QVERIFY(!m_pWindow->windowIcon().isNull());
    }

    void formHasItsWidgets()
    {
        QVERIFY(!Box()->isTristate());
        QStringList listSeen;
        for (const auto* pButton : m_pWindow->findChildren<QAbstractButton*>(QString(), Qt::FindDirectChildrenOnly)) {
            const QRect place = pButton->geometry();
            listSeen.append(QString::asprintf("%s %s %d,%d %dx%d ", pButton->metaObject()->className(),
                                              qPrintable(pButton->objectName()), place.x(), place.y(), place.width(),
                                              place.height()) +
                            pButton->text());
        }
        QCOMPARE(listSeen, QStringList({u"QCheckBox checkBoxAutoStart 70,60 130x25 开机启动"_s,
                                        u"QPushButton pushButtonOK 70,250 80x25 确定"_s,
                                        u"QPushButton pushButtonCancel 250,250 80x25 取消"_s}));
    }

    void boxFollowsTheFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("missing") << c_none;
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("disabled entry") << QByteArray("[Desktop Entry]\nHidden=true\n");
    }

    /// From the start, and each time that the window opens.
    void boxFollowsTheFile()
    {
        QFETCH(QByteArray, content);
        const bool bThere = !content.isNull();
        QVERIFY(!bThere || WriteFile(m_strTarget, content));
        m_pWindow = std::make_unique<AppSetting>();
        QCOMPARE(m_pWindow->ReadAutoStartOption(), bThere);
        QCOMPARE(Box()->isChecked(), bThere);
        QVERIFY(bThere ? QFile::remove(m_strTarget) : WriteFile(m_strTarget, c_shipped));
        QCOMPARE(Box()->isChecked(), bThere);
        m_pWindow->show();
        QCOMPARE(Box()->isChecked(), !bThere);
    }

    void windowManagerBringsBackWhatTheUserChose()
    {
        m_pWindow->show();
        Box()->setChecked(true);
        QShowEvent event;
        QSpontaneKeyEvent::setSpontaneous(&event);
        qApp->notify(m_pWindow.get(), &event);
        QVERIFY(Box()->isChecked());
    }

    void leavingKeepsOrDrops_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<Qt::CheckState>("box");
        QTest::addColumn<QString>("button"); // none: the title bar
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<bool>("there");
        const QString strOk = u"pushButtonOK"_s;
        const QString strCancel = u"pushButtonCancel"_s;
        const QString strInside = m_strTarget + u"/inside"_s; // of a folder, which a file's removal leaves alone
        QTest::newRow("on") << m_strTarget << c_none << Qt::Checked << strOk << c_shipped << true;
        QTest::newRow("half on") << m_strTarget << c_none << Qt::PartiallyChecked << strOk << c_shipped << true;
        QTest::newRow("still on") << m_strTarget << c_own << Qt::Checked << strOk << c_own << true;
        QTest::newRow("off") << m_strTarget << c_own << Qt::Unchecked << strOk << c_none << false;
        QTest::newRow("still off") << m_strTarget << c_none << Qt::Unchecked << strOk << c_none << false;
        QTest::newRow("on, folder is a file") << m_strFolder << c_own << Qt::Checked << strOk << c_own << false;
        QTest::newRow("off, file is a folder") << strInside << c_own << Qt::Unchecked << strOk << c_own << true;
        QTest::newRow("cancel on") << m_strTarget << c_none << Qt::Checked << strCancel << c_none << false;
        QTest::newRow("cancel off") << m_strTarget << c_own << Qt::Unchecked << strCancel << c_own << true;
        QTest::newRow("close on") << m_strTarget << c_none << Qt::Checked << QString() << c_none << false;
        QTest::newRow("close off") << m_strTarget << c_own << Qt::Unchecked << QString() << c_own << true;
    }

    /// What stands under the path, and whether the entry is there.
    void leavingKeepsOrDrops()
    {
        QFETCH(QString, path);
        QFETCH(QByteArray, before);
        QFETCH(Qt::CheckState, box);
        QFETCH(QString, button);
        QFETCH(QByteArray, after);
        QFETCH(bool, there);
        QVERIFY(before.isNull() || WriteFile(path, before));
        m_pWindow->show();
        Box()->setCheckState(box);
        QCOMPARE(ReadFile(path), before); // nothing before the window is left
        if (button.isEmpty()) {
            QVERIFY(IsHiddenByClosing(*m_pWindow));
        } else {
            Click(button);
        }
        QVERIFY(m_pWindow->isHidden());
        QCOMPARE(ReadFile(path), after);
        QCOMPARE(QFile::exists(m_strTarget), there);
        QCOMPARE(Box()->checkState(), there ? Qt::Checked : Qt::Unchecked);
        QCOMPARE(ReadFile(m_strSource), c_shipped);
    }

    void okTellsTheTruth_data()
    {
        QTest::addColumn<QByteArray>("home");
        QTest::addColumn<bool>("shipped");
        QTest::newRow("nothing to copy") << QByteArray("/tmp/home/none") << false;
        QTest::newRow("home full") << QByteArray("/tmp/home/full") << true;
        QTest::newRow("home not there, and nowhere to make it") << QByteArray("/proc/home") << true;
        QTest::newRow("home not there yet") << QByteArray("/tmp/home/new") << true;
    }

    /// A limit on the length of files is to a writer what a full file system is.
    void okTellsTheTruth()
    {
        QFETCH(QByteArray, home);
        QFETCH(bool, shipped);
        const QByteArray oldHome = qgetenv("HOME");
        rlimit oldLimit = {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &oldLimit), 0);
        QVERIFY(shipped || QFile::remove(m_strSource));
        m_pWindow->show();
        Box()->setChecked(true);
        (void)std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {home.endsWith("full") ? 0 : oldLimit.rlim_cur, oldLimit.rlim_max};
        qputenv("HOME", home);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &limit), 0);
        Click(u"pushButtonOK"_s);
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &oldLimit), 0);
        qputenv("HOME", oldHome);
        const QDir folder(QString::fromLocal8Bit(home) + u"/.config/autostart"_s);
        const bool bThere = ReadFile(folder.filePath(c_strEntry)) == c_shipped;
        QCOMPARE(bThere, shipped && home.endsWith("new"));
        QCOMPARE(Box()->isChecked(), bThere);
        // Neither a part of the file nor another beside it.
        QCOMPARE(folder.entryList(QDir::Files | QDir::Hidden), bThere ? QStringList{c_strEntry} : QStringList());
    }

    void saveOptionFollowsItsArgument()
    {
        m_pWindow->SaveAutoStartOption(true);
        QCOMPARE(ReadFile(m_strTarget), c_shipped);
        Box()->setChecked(true);
        m_pWindow->SaveAutoStartOption(false);
        QVERIFY(!QFile::exists(m_strTarget));
        QVERIFY(QFileInfo(m_strFolder).isDir());
    }

private:
    QCheckBox* Box() const { return m_pWindow->findChild<QCheckBox*>(); }

    void Click(const QString& strButton) const
    {
        QTest::mouseClick(m_pWindow->findChild<QPushButton*>(strButton), Qt::LeftButton);
    }

    QString m_strSource;
    QString m_strFolder;
    QString m_strTarget;
    std::unique_ptr<AppSetting> m_pWindow;
};

QTEST_MAIN(tst_AppSetting)

#include "tst_AppSetting.moc"

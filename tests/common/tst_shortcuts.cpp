#include "CommonUtils.h"
#include "LogCapture.h"
#include "PluginInterfaces.h"
#include "Startup.h"
#include "TestFiles.h"

#include <NexoSim.h>

#include <QDialog>
#include <QRegularExpression>
#include <QtTest>

#include <memory>

namespace {

const QString kFrame = "D754AE84-535F-4c18-85F8-F154CFE34DDF";
const QString kCall = "58A0343A-93DB-4ea2-92B4-C51589629381";
const QString kNumber = "+4930123456";
const QString kCpp = "T: ../../src/core/common/CommonUtils.cpp: ";
const QString kSrc = "../../src/core/common/CommonUtils: ";
const QString kEnter = kCpp + "GetMainWindow : L : Enter",
              kExit = kCpp + "GetMainWindow : L : Exit";
const QString kStart = "Start: " + kCpp + "MakeCall 1118", kEnd = "End  : " + kCpp + "MakeCall L";
const QString kNullPointer = "Null pointer returning from : " + kCpp + "MakeCall L";
const QString kDeviceFail = "T: " + kSrc + "GetDeviceMgrPlugin:fail to get plugin";

// The common lines with time stamps as T and line numbers (but MakeCall's Start) as L.
QStringList commonLines(const LogCapture &log)
{
    QStringList lines;
    for (const LogCapture::Line &line : log.lines()) {
        QString text = line.text;
        text.replace(QRegularExpression("\\d\\d:\\d\\d:\\d\\d:\\d\\d\\d"), "T");
        if (!text.startsWith("Start"))
            text.replace(QRegularExpression("(GetMainWindow : |MakeCall )\\d+"), "\\1L");
        if (line.category == "linkdeck.core.common")
            lines << text;
    }
    return lines;
}

} // namespace

class tst_Shortcuts : public QObject
{
    Q_OBJECT

    std::unique_ptr<Startup> m_pStartup;

    // The frame "Frame" or "Bare" (a library without the interfaces); the device manager,
    // layout and call plugin each in its own library ("Full"), in "Bare" or switched off ("Off").
    void start(const QString &frame, const QString &helpers)
    {
        QByteArray library = "<pluginslib><mainplugin>TestFrame</mainplugin>";
        QByteArray common = "<pluginsconfig><common>";
        const QStringList records{"TestFrame " + kFrame + " Frame 1",
                                  "DeviceMgrUIPlugin 8772F2BF-3227-4203-AFDD-DBAD1E9D1F98 DevMgr 2",
                                  "LayoutPlugin " SHORTCUT_LAYOUT_CLSID " Layout 0",
                                  "CallUIPlugin " + kCall + " Call 0"};
        for (const QString &record : records) {
            QStringList f = record.split(' ');
            f[2] = f[2] == "Frame" ? frame : helpers == "Full" ? f[2] : helpers;
            library += QString("<plugin><name>%1</name><clsid>%2</clsid><url>%3</url><active>true"
                               "</active><type>%4</type><static>false</static></plugin>")
                           .arg(f[0], f[1], f[2], f[3])
                           .toLatin1();
            if (f[2] != "Off")
                common += "<item clsid=\"" + f[1].toLatin1() + "\"/>";
        }
        QVERIFY(TestFiles::writeAppFile("/config/pluginslib.xml", library + "</pluginslib>"));
        QVERIFY(TestFiles::writeAppFile("/config/PluginsConfig.xml",
                                        common + "</common></pluginsconfig>"));
        m_pStartup = std::make_unique<Startup>(true);
    }

private slots:
    void init()
    {
        TestFiles::useFreshSettings();
        NexoSim_Reset();
    }
    void cleanup()
    {
        // The container's initialisation thread ends once the device wait is over.
        IPluginContainer *pContainer = Startup::GetPluginContainer();
        QTRY_VERIFY_WITH_TIMEOUT(!pContainer || pContainer->IsPluginsConfigInitialized(), 15000);
        m_pStartup.reset();
    }

    void shortcuts_data()
    {
        QTest::addColumn<QString>("setup");     // frame and helpers; empty: no container
        QTest::addColumn<QStringList>("found"); // window, device, layout tags; "" for null
        QTest::addColumn<QStringList>("lines");

        const QStringList none{"", "", ""};
        QTest::newRow("no container")
            << QString() << none
            << QStringList{kEnter, kSrc + "GetMainWindow: Startup::GetPluginContainer failed",
                           "T: " + kSrc + "GetDeviceMgrPlugin:Get plugin container error", kStart,
                           kNullPointer};
        QTest::newRow("every plugin in place")
            << "Frame Full" << QStringList{"Frame", "DevMgr", "Layout"}
            << QStringList{kEnter, kExit, kStart, kEnd};
        QTest::newRow("plugins without the interfaces")
            << "Bare Bare" << none << QStringList{kEnter, kExit, kDeviceFail, kStart, kNullPointer};
    }
    void shortcuts()
    {
        QFETCH(QString, setup);
        QFETCH(QStringList, found);
        QFETCH(QStringList, lines);
        if (!setup.isEmpty())
            start(setup.section(' ', 0, 0), setup.section(' ', 1));

        LogCapture log;
        QWidget *pWindow = CommonUtils::GetMainWindow();
        IDeviceMgr *pDeviceMgr = CommonUtils::GetDeviceMgrPlugin();
        ILayout *pLayout = CommonUtils::GetLayoutPlugin();
        CommonUtils::MakeCall(kNumber);

        QCOMPARE(commonLines(log), lines);
        QCOMPARE(pWindow ? pWindow->objectName() : QString(), found[0]);
        QCOMPARE(pDeviceMgr ? pDeviceMgr->GetLastUsedDevice() : QString(), found[1]);
        QCOMPARE(pLayout ? pLayout->GetLayoutWidget()->objectName() : QString(), found[2]);
        QCOMPARE(log.contains("Call: MakeCall " + kNumber + " 0"), lines.contains(kEnd));
        QCOMPARE(CommonUtils::IsPluginAvailable(kCall), !setup.isEmpty());
    }

    void placement_data()
    {
        QTest::addColumn<QRect>("window"); // null: no main window
        QTest::addColumn<QSize>("dialog");
        QTest::addColumn<QPoint>("centre");
        QTest::addColumn<QPoint>("centred");
        QTest::addColumn<QPoint>("related"); // where MoveRelatedCentre puts it from (7, 9)

        QTest::newRow("no main window")
            << QRect() << QSize(200, 100) << QPoint(0, 0) << QPoint(-100, -50) << QPoint(7, 9);
        QTest::newRow("even sizes") << QRect(100, 50, 400, 300) << QSize(200, 100)
                                    << QPoint(299, 199) << QPoint(199, 149) << QPoint(100, 100);
    }
    void placement()
    {
        QFETCH(QRect, window);
        QFETCH(QSize, dialog);
        QFETCH(QPoint, centre);
        QFETCH(QPoint, centred);
        QFETCH(QPoint, related);
        if (!window.isNull()) {
            start("Frame", "Off");
            CommonUtils::GetMainWindow()->setGeometry(window);
        }
        QDialog box;
        box.resize(dialog);

        LogCapture log;
        QCOMPARE(CommonUtils::GetCentrePoint(), centre);
        CommonUtils::MoveCentre(&box);
        QCOMPARE(box.pos(), centred);
        box.move(7, 9);
        CommonUtils::MoveRelatedCentre(&box);
        QCOMPARE(box.pos(), related);
        CommonUtils::MoveCentre(nullptr);

        const QString noWindow = kSrc + "%1: m_pwidgetParent is NULL";
        QVERIFY(log.containsInOrder(
            {kSrc + "MoveRelatedCentre Enter", kSrc + "MoveRelatedCentre: Exit"}));
        QCOMPARE(log.count(noWindow.arg("GetCentrePoint")), window.isNull() ? 2 : 0);
        QCOMPARE(log.count(noWindow.arg("MoveRelatedCentre")), window.isNull() ? 1 : 0);
    }
};

QTEST_MAIN(tst_Shortcuts)
#include "tst_shortcuts.moc"

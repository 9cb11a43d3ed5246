#include "Change.h"
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

// Records "name clsid url type" of the main plugin "TestFrame"'s set; url "Off": switched off.
void writeConfiguration(const QStringList &records)
{
    QByteArray library = "<pluginslib><mainplugin>TestFrame</mainplugin>";
    QByteArray common = "<pluginsconfig><common>";
    for (const QString &r : records) {
        const QStringList f = r.split(' ');
        library += QString("<plugin><name>%1</name><clsid>%2</clsid><url>%3</url><active>true"
                           "</active><type>%4</type><static>false</static></plugin>")
                       .arg(f[0], f[1], f[2], f[3])
                       .toLatin1();
        if (f[2] != "Off")
            common += "<item clsid=\"" + f[1].toLatin1() + "\"/>";
    }
    QVERIFY(TestFiles::writeAppFile("/config/pluginslib.xml", library + "</pluginslib>"));
    QVERIFY(
        TestFiles::writeAppFile("/config/PluginsConfig.xml", common + "</common></pluginsconfig>"));
}

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

    // Roles: frame clsid, then frame, device manager, layout and call plugin each "Full" (own
    // library), "Bare" (a library without the interfaces) or "Off".
    void start(const QStringList &roles)
    {
        auto url = [&](int i, const char *full) { return roles[i] == "Full" ? full : roles[i]; };
        writeConfiguration(
            {"TestFrame " + roles[0] + " " + url(1, "Frame") + " 1",
             "DeviceMgrUIPlugin 8772F2BF-3227-4203-AFDD-DBAD1E9D1F98 " + url(2, "DevMgr") + " 2",
             "LayoutPlugin " SHORTCUT_LAYOUT_CLSID " " + url(3, "Layout") + " 0",
             "CallUIPlugin " + kCall + " " + url(4, "Call") + " 0"});
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
        QTest::addColumn<QStringList>("roles"); // empty: no container
        QTest::addColumn<QStringList>("found"); // window, device, layout tags; "" for null
        QTest::addColumn<QStringList>("lines");

        const QStringList full{kFrame, "Full", "Full", "Full", "Full"}, none{"", "", ""};
        QTest::newRow("no container")
            << QStringList() << none
            << QStringList{kEnter, kSrc + "GetMainWindow: Startup::GetPluginContainer failed",
                           "T: " + kSrc + "GetDeviceMgrPlugin:Get plugin container error", kStart,
                           kNullPointer};
        QTest::newRow("every plugin in place") << full << QStringList{"Frame", "DevMgr", "Layout"}
                                               << QStringList{kEnter, kExit, kStart, kEnd};
        QTest::newRow("plugins without the interfaces")
            << QStringList{kFrame, "Bare", "Bare", "Bare", "Bare"} << none
            << QStringList{kEnter, kExit, kDeviceFail, kStart, kNullPointer};
        QTest::newRow("helpers switched off")
            << QStringList{kFrame, "Full", "Off", "Off", "Off"} << QStringList{"Frame", "", ""}
            << QStringList{kEnter, kExit, kDeviceFail, kStart, kNullPointer};
        QTest::newRow("layout plugin without ILayout")
            << QStringList{kFrame, "Full", "Full", "Bare", "Full"}
            << QStringList{"Frame", "DevMgr", ""} << QStringList{kEnter, kExit, kStart, kEnd};
        // The layout is found through the main plugin's name, the window through the clsid.
        QTest::newRow("main frame under another clsid")
            << QStringList{"5D0C1F2A-0000-4000-8000-00000000F0F0", "Full", "Full", "Full", "Full"}
            << QStringList{"", "DevMgr", "Layout"}
            << QStringList{kEnter, kSrc + "GetMainWindow: pPluginContainer->GetPlugin failed",
                           kStart, kEnd};
    }
    void shortcuts()
    {
        QFETCH(QStringList, roles);
        QFETCH(QStringList, found);
        QFETCH(QStringList, lines);
        if (!roles.isEmpty())
            start(roles);

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
        QCOMPARE(CommonUtils::IsPluginAvailable(kCall), !roles.isEmpty() && roles[4] != "Off");
    }

    // Helpers side by side are all taken out; clsids compared exactly; other types left out.
    void embedList()
    {
        QCOMPARE(CommonUtils::GetUIEmbedPlugibList(), QList<QString>());
        const QString a = "AAAA0000-0000-4000-8000-000000000001", lower = kFrame.toLower();
        const QStringList clsids =
            QString(a +
                    " 140B81C0-F62B-4ee0-9897-BDC3F8F03B18 D2AB6727-AF80-4ef7-B37E-F217803B85A4"
                    " FCDC307E-06DC-4dfa-AC83-834D0E306D48 385BDF98-9AA3-4121-9FBB-CACB1CD9608B"
                    " 881EA87E-882C-4f22-961C-466E0686F707 90DC623D-19BD-4dee-8940-470AD75BB60E " +
                    kFrame + " " + lower + " BBBB0000-0000-4000-8000-000000000002")
                .split(' ');
        QStringList records;
        for (const QString &clsid : clsids)
            records << "P" + QString::number(records.size()) + " " + clsid + " Off " +
                           (clsid.startsWith("BBBB") ? "1" : "0");
        writeConfiguration(records);
        m_pStartup = std::make_unique<Startup>(true);

        LogCapture log;
        QCOMPARE(CommonUtils::GetUIEmbedPlugibList(), QList<QString>({a, lower}));
        QCOMPARE(commonLines(log), QStringList{kSrc + "GetUIEmbedPlugibList: entered"});
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
        // Edges -300 and -201, 1 and 11: halves truncated toward zero.
        QTest::newRow("odd sizes left of the origin")
            << QRect(-300, 1, 100, 11) << QSize(201, 101) << QPoint(-250, 6) << QPoint(-350, -44)
            << QPoint(-50, -45);
    }
    void placement()
    {
        QFETCH(QRect, window);
        QFETCH(QSize, dialog);
        QFETCH(QPoint, centre);
        QFETCH(QPoint, centred);
        QFETCH(QPoint, related);
        if (!window.isNull()) {
            start({kFrame, "Full", "Off", "Off", "Off"});
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

    // Lines joined without breaks, read once for all named widgets; the name follows the language.
    void style_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("name");

        QTest::newRow("English") << "en-us"
                                 << "Core_Label";
        QTest::newRow("German") << "de-de"
                                << "Core_Label_Ru";
        QTest::newRow("British English is not en-us") << "en-gb"
                                                      << "Core_Label_Ru";
    }
    void style()
    {
        QFETCH(QString, language);
        QFETCH(QString, name);
        QVERIFY(TestFiles::writeAppFile("/skin/IDS_SKIN_DEFAULT.qss", "a {}\r\n\r\n  b {}"));
        QCOMPARE(CommonUtils::GetQStyleString(), QString("a {}  b {}"));
        Change::SetLangName(language);
        QWidget named, later;
        CommonUtils::setObjectNameExForLDK(&named, "Core_Label");
        QVERIFY(TestFiles::removeAppPath("/skin/IDS_SKIN_DEFAULT.qss"));
        QCOMPARE(CommonUtils::GetQStyleString(), QString());
        CommonUtils::setObjectNameExForLDK(&later, "Core_Label");
        QCOMPARE(named.objectName(), name);
        QCOMPARE(later.styleSheet(), QString("a {}  b {}"));

        LogCapture log;
        CommonUtils::setObjectNameExForLDK(nullptr, "none");
        QVERIFY(log.contains(kSrc + "setObjectNameExForLDK: widget is NULL"));
    }
};

QTEST_MAIN(tst_Shortcuts)
#include "tst_shortcuts.moc"

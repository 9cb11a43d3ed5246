#include "Change.h"
#include "CommonUtils.h"
#include "IPluginContainer.h"
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

const QString kFrame = QStringLiteral("D754AE84-535F-4c18-85F8-F154CFE34DDF");
const QString kDeviceMgr = QStringLiteral("8772F2BF-3227-4203-AFDD-DBAD1E9D1F98");
const QString kCall = QStringLiteral("58A0343A-93DB-4ea2-92B4-C51589629381");
const QString kLayout = QStringLiteral(SHORTCUT_LAYOUT_CLSID);
const QString kOtherFrame = QStringLiteral("5D0C1F2A-0000-4000-8000-00000000F0F0");
const QString kNumber = QStringLiteral("+4930123456");

// Each role: "Full" (its own library), "Bare" (interfaces missing) or "Off" (switched off).
struct Roles
{
    QString frameClsid, frame, deviceMgr, layout, call;
};

QByteArray record(const QString &name, const QString &clsid, const QString &url, int type)
{
    return QStringLiteral("<plugin><name>%1</name><clsid>%2</clsid><url>%3</url><active>true"
                          "</active><type>%4</type><static>false</static></plugin>")
        .arg(name, clsid, url)
        .arg(type)
        .toLatin1();
}

// The main plugin "TestFrame" and the records given as (name, clsid, url or "Off", type).
void writeConfiguration(const QList<QStringList> &records)
{
    QByteArray library = "<pluginslib><mainplugin>TestFrame</mainplugin>";
    QByteArray common = "<pluginsconfig><common>";
    for (const QStringList &r : records) {
        library += record(r[0], r[1], r[2], r[3].toInt());
        if (r[2] != QLatin1String("Off"))
            common += "<item clsid=\"" + r[1].toLatin1() + "\"/>";
    }
    QVERIFY(TestFiles::writeAppFile("/config/pluginslib.xml", library + "</pluginslib>"));
    QVERIFY(
        TestFiles::writeAppFile("/config/PluginsConfig.xml", common + "</common></pluginsconfig>"));
}

QString url(const QString &kind, const char *fullUrl)
{
    return kind == QLatin1String("Full") ? QString(fullUrl) : kind;
}

// The core's common lines with time stamps and (but MakeCall's Start) line numbers as T and L.
QStringList commonLines(const LogCapture &log)
{
    QStringList lines;
    for (const LogCapture::Line &line : log.lines()) {
        if (line.category != QLatin1String("linkdeck.core.common"))
            continue;
        QString text = line.text;
        text.replace(QRegularExpression("\\d\\d:\\d\\d:\\d\\d:\\d\\d\\d"), "T");
        if (!text.startsWith("Start"))
            text.replace(QRegularExpression("(GetMainWindow : |MakeCall )\\d+"), "\\1L");
        lines << text;
    }
    return lines;
}

const QString kCpp = QStringLiteral("T: ../../src/core/common/CommonUtils.cpp: ");
const QString kSrc = QStringLiteral("../../src/core/common/CommonUtils: ");
const QString kEnter = kCpp + "GetMainWindow : L : Enter";
const QString kExit = kCpp + "GetMainWindow : L : Exit";
const QString kStart = "Start: " + kCpp + "MakeCall 1118";
const QString kEnd = "End  : " + kCpp + "MakeCall L";
const QString kNullPointer = "Null pointer returning from : " + kCpp + "MakeCall L";
const QString kDeviceFail = "T: " + kSrc + "GetDeviceMgrPlugin:fail to get plugin";

} // namespace

class tst_Shortcuts : public QObject
{
    Q_OBJECT

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

    void shortcuts_data();
    void shortcuts();
    void embedList_data();
    void embedList();
    void placement_data();
    void placement();
    void styleSheet_data();
    void styleSheet();
    void styleSheetReadOnce();
    void objectNameFollowsLanguage_data();
    void objectNameFollowsLanguage();

private:
    void start(const Roles &roles)
    {
        writeConfiguration({{"TestFrame", roles.frameClsid, url(roles.frame, "Frame"), "1"},
                            {"DeviceMgrUIPlugin", kDeviceMgr, url(roles.deviceMgr, "DevMgr"), "2"},
                            {"LayoutPlugin", kLayout, url(roles.layout, "Layout"), "0"},
                            {"CallUIPlugin", kCall, url(roles.call, "Call"), "0"}});
        m_pStartup = std::make_unique<Startup>(true);
    }

    std::unique_ptr<Startup> m_pStartup;
};

void tst_Shortcuts::shortcuts_data()
{
    QTest::addColumn<bool>("container");
    QTest::addColumn<QStringList>("roles"); // frame clsid, frame, device manager, layout, call
    QTest::addColumn<QStringList>("found"); // window, device, layout tags; "" for null
    QTest::addColumn<bool>("called");
    QTest::addColumn<QStringList>("lines");

    const QStringList full{kFrame, "Full", "Full", "Full", "Full"};
    const QStringList none{"", "", ""};
    QTest::newRow("no container")
        << false << full << none << false
        << QStringList{kEnter, kSrc + "GetMainWindow: Startup::GetPluginContainer failed",
                       "T: " + kSrc + "GetDeviceMgrPlugin:Get plugin container error", kStart,
                       kNullPointer};
    QTest::newRow("every plugin in place")
        << true << full << QStringList{"Frame", "DevMgr", "Layout"} << true
        << QStringList{kEnter, kExit, kStart, kEnd};
    QTest::newRow("plugins without the interfaces")
        << true << QStringList{kFrame, "Bare", "Bare", "Bare", "Bare"} << none << false
        << QStringList{kEnter, kExit, kDeviceFail, kStart, kNullPointer};
    QTest::newRow("helpers switched off")
        << true << QStringList{kFrame, "Full", "Off", "Off", "Off"} << QStringList{"Frame", "", ""}
        << false << QStringList{kEnter, kExit, kDeviceFail, kStart, kNullPointer};
    QTest::newRow("layout plugin without ILayout")
        << true << QStringList{kFrame, "Full", "Full", "Bare", "Full"}
        << QStringList{"Frame", "DevMgr", ""} << true << QStringList{kEnter, kExit, kStart, kEnd};
    // The layout is found through the main plugin's name, the window through the fixed clsid.
    QTest::newRow("main frame under another clsid")
        << true << QStringList{kOtherFrame, "Full", "Full", "Full", "Full"}
        << QStringList{"", "DevMgr", "Layout"} << true
        << QStringList{kEnter, kSrc + "GetMainWindow: pPluginContainer->GetPlugin failed", kStart,
                       kEnd};
}

void tst_Shortcuts::shortcuts()
{
    QFETCH(bool, container);
    QFETCH(QStringList, roles);
    QFETCH(QStringList, found);
    QFETCH(bool, called);
    QFETCH(QStringList, lines);
    if (container)
        start({roles[0], roles[1], roles[2], roles[3], roles[4]});

    LogCapture log;
    QWidget *pWindow = CommonUtils::GetMainWindow();
    IDeviceMgr *pDeviceMgr = CommonUtils::GetDeviceMgrPlugin();
    ILayout *pLayout = CommonUtils::GetLayoutPlugin();
    CommonUtils::MakeCall(kNumber);

    QCOMPARE(commonLines(log), lines);
    QCOMPARE(pWindow ? pWindow->objectName() : QString(), found[0]);
    QCOMPARE(pDeviceMgr ? pDeviceMgr->GetLastUsedDevice() : QString(), found[1]);
    QCOMPARE(pLayout ? pLayout->GetLayoutWidget()->objectName() : QString(), found[2]);
    QCOMPARE(log.contains("Call: MakeCall " + kNumber + " 0"), called);
    QCOMPARE(CommonUtils::IsPluginAvailable(kCall), container && roles[4] != "Off");
}

void tst_Shortcuts::embedList_data()
{
    QTest::addColumn<QStringList>("typeZero"); // in file order; "-" marks a type-1 record
    QTest::addColumn<QStringList>("embedded");

    const QString a = "AAAA0000-0000-4000-8000-000000000001";
    const QString b = "BBBB0000-0000-4000-8000-000000000002";
    const QStringList helpers{kFrame,
                              "140B81C0-F62B-4ee0-9897-BDC3F8F03B18",
                              "D2AB6727-AF80-4ef7-B37E-F217803B85A4",
                              "FCDC307E-06DC-4dfa-AC83-834D0E306D48",
                              "385BDF98-9AA3-4121-9FBB-CACB1CD9608B",
                              "881EA87E-882C-4f22-961C-466E0686F707",
                              "90DC623D-19BD-4dee-8940-470AD75BB60E"};
    QTest::newRow("helpers side by side are all taken out")
        << QStringList{a} + helpers + QStringList{b} << QStringList{a, b};
    QTest::newRow("only helpers") << helpers << QStringList();
    QTest::newRow("compared exactly")
        << QStringList{kFrame.toLower(), a} << QStringList{kFrame.toLower(), a};
    QTest::newRow("other types left out, file order kept")
        << QStringList{b, "-", a} << QStringList{b, a};
}

void tst_Shortcuts::embedList()
{
    QFETCH(QStringList, typeZero);
    QFETCH(QStringList, embedded);
    QList<QStringList> records;
    for (const QString &clsid : typeZero)
        records << (clsid == "-"
                        ? QStringList{"Typed", "CCCC0000-0000-4000-8000-000000000003", "Off", "1"}
                        : QStringList{"P" + QString::number(records.size()), clsid, "Off", "0"});
    QCOMPARE(CommonUtils::GetUIEmbedPlugibList(), QList<QString>());
    writeConfiguration(records);
    m_pStartup = std::make_unique<Startup>(true);

    LogCapture log;
    QCOMPARE(CommonUtils::GetUIEmbedPlugibList(), QList<QString>(embedded));
    QCOMPARE(commonLines(log), QStringList{kSrc + "GetUIEmbedPlugibList: entered"});
}

void tst_Shortcuts::placement_data()
{
    QTest::addColumn<QRect>("window"); // null: no main window
    QTest::addColumn<QSize>("dialog");
    QTest::addColumn<QPoint>("centre");
    QTest::addColumn<QPoint>("centred");
    QTest::addColumn<QPoint>("related"); // where MoveRelatedCentre puts it

    const QPoint untouched(7, 9);
    QTest::newRow("no main window")
        << QRect() << QSize(200, 100) << QPoint(0, 0) << QPoint(-100, -50) << untouched;
    QTest::newRow("even sizes") << QRect(100, 50, 400, 300) << QSize(200, 100) << QPoint(299, 199)
                                << QPoint(199, 149) << QPoint(100, 100);
    // Edges -300 and -201, 1 and 11: halves truncated toward zero.
    QTest::newRow("odd sizes left of the origin")
        << QRect(-300, 1, 100, 11) << QSize(201, 101) << QPoint(-250, 6) << QPoint(-350, -44)
        << QPoint(-50, -45);
}

void tst_Shortcuts::placement()
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
    QVERIFY(
        log.containsInOrder({kSrc + "MoveRelatedCentre Enter", kSrc + "MoveRelatedCentre: Exit"}));
    QCOMPARE(log.count(noWindow.arg("GetCentrePoint")), window.isNull() ? 2 : 0);
    QCOMPARE(log.count(noWindow.arg("MoveRelatedCentre")), window.isNull() ? 1 : 0);
}

void tst_Shortcuts::styleSheet_data()
{
    QTest::addColumn<QByteArray>("file"); // null: no file
    QTest::addColumn<QString>("style");

    QTest::newRow("missing file") << QByteArray() << QString();
    QTest::newRow("lines joined with nothing between")
        << QByteArray("QLabel { color: red; }\nQWidget#X {}\n")
        << "QLabel { color: red; }QWidget#X {}";
    QTest::newRow("CRLF and no final line break")
        << QByteArray("a {}\r\n\r\n  b {}") << "a {}  b {}";
}

void tst_Shortcuts::styleSheet()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, style);
    const QString path = "/skin/IDS_SKIN_DEFAULT.qss";
    QVERIFY(file.isNull() ? TestFiles::removeAppPath(path) : TestFiles::writeAppFile(path, file));
    QCOMPARE(CommonUtils::GetQStyleString(), style);
}

// The sheet is read by the first widget named and kept for all later ones.
void tst_Shortcuts::styleSheetReadOnce()
{
    const QString path = "/skin/IDS_SKIN_DEFAULT.qss";
    QVERIFY(TestFiles::writeAppFile(path, "QWidget#first {}\n"));
    QWidget first, second;
    CommonUtils::setObjectNameExForLDK(&first, "first");
    QVERIFY(TestFiles::writeAppFile(path, "QWidget#second {}\n"));
    CommonUtils::setObjectNameExForLDK(&second, "second");
    QCOMPARE(first.styleSheet(), QString("QWidget#first {}"));
    QCOMPARE(second.styleSheet(), first.styleSheet());

    LogCapture log;
    CommonUtils::setObjectNameExForLDK(nullptr, "none");
    QVERIFY(log.contains(kSrc + "setObjectNameExForLDK: widget is NULL"));
}

void tst_Shortcuts::objectNameFollowsLanguage_data()
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

void tst_Shortcuts::objectNameFollowsLanguage()
{
    QFETCH(QString, language);
    QFETCH(QString, name);
    Change::SetLangName(language);
    QWidget widget;
    CommonUtils::setObjectNameExForLDK(&widget, "Core_Label");
    QCOMPARE(widget.objectName(), name);
}

QTEST_MAIN(tst_Shortcuts)
#include "tst_shortcuts.moc"

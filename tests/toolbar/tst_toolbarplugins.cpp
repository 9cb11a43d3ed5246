#include "ToolBarLogic.h"
#include "ToolBarXmlText.h"

#include "CommonUtils.h"
#include "IPluginContainer.h"
#include "LogCapture.h"
#include "Startup.h"
#include "TestFiles.h"

#include <QtTest>

#include <memory>

using namespace ToolBarXmlText;

namespace {
const QString kSource = QStringLiteral("../../src/core/ToolBar/ToolBarLogic.cpp");
const QString kCallClsid = QStringLiteral("7B0C1A2E-0001-4C11-9A00-000000000001");
const QString kHelperClsid = QStringLiteral("7B0C1A2E-0002-4C11-9A00-000000000002");
const QString kIdleClsid = QStringLiteral("7B0C1A2E-0003-4C11-9A00-000000000003");

QByteArray pluginRecord(const QString &name, const QString &clsid, const QString &url, bool active)
{
    return QStringLiteral("<plugin><name>%1</name><clsid>%2</clsid><url>%3</url><active>%4</active>"
                          "<type>1</type><setting_title>false</setting_title><static>false</static>"
                          "</plugin>\n")
        .arg(name, clsid, url, active ? QStringLiteral("true") : QStringLiteral("false"))
        .toUtf8();
}

QString writeToolBarFile(const QByteArray &contents)
{
    const QString path =
        TestFiles::appDir() + QStringLiteral("/toolbars/tb_%1.xml").arg(qHash(contents));
    if (!TestFiles::writeFile(path, contents))
        qFatal("cannot write the toolbar file");
    return path;
}
} // namespace

// Toolbar items that belong to plugins, read while a real container holds two loaded test
// plugins ("CallUIPlugin", "HelperPlugin") and one that is never loaded ("IdlePlugin").
class tst_ToolBarPlugins : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void getPlugin();
    void callSetting_data();
    void callSetting();

private:
    std::unique_ptr<Startup> m_startup;
};

void tst_ToolBarPlugins::initTestCase()
{
    TestFiles::useFreshSettings();
    const QByteArray library = "<plugins><mainplugin>NoMainFrame</mainplugin>\n" +
                               pluginRecord("CallUIPlugin", kCallClsid, "CallUIPlugin", true) +
                               pluginRecord("HelperPlugin", kHelperClsid, "HelperPlugin", true) +
                               pluginRecord("IdlePlugin", kIdleClsid, "IdlePlugin", false) +
                               "</plugins>";
    const QByteArray config =
        QStringLiteral("<config><common><item clsid=\"%1\"/><item clsid=\"%2\"/>"
                       "<item clsid=\"%3\"/></common></config>")
            .arg(kCallClsid, kHelperClsid, kIdleClsid)
            .toUtf8();
    QVERIFY(TestFiles::writeAppFile(QStringLiteral("/config/pluginslib.xml"), library));
    QVERIFY(TestFiles::writeAppFile(QStringLiteral("/config/PluginsConfig.xml"), config));

    m_startup = std::make_unique<Startup>(true);
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    QVERIFY(pContainer);
    pContainer->LoadAllStaticOrActivePlugin();
    QVERIFY(pContainer->IsPluginLoaded(kCallClsid));
    QVERIFY(pContainer->IsPluginLoaded(kHelperClsid));
    QVERIFY(!pContainer->IsPluginLoaded(kIdleClsid));
}

void tst_ToolBarPlugins::cleanupTestCase()
{
    m_startup.reset();
}

void tst_ToolBarPlugins::getPlugin()
{
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    QObject *pHelper = ToolBarLogic::getPlugin(QStringLiteral("HelperPlugin"));
    QVERIFY(pHelper);
    QCOMPARE(pHelper, pContainer->GetPlugin(kHelperClsid, 0));

    LogCapture log;
    for (const QString &name : {QStringLiteral("IdlePlugin"), QStringLiteral("helperplugin"),
                                QStringLiteral("NoSuchPlugin")}) {
        log.clear();
        QCOMPARE(ToolBarLogic::getPlugin(name), nullptr);
        QVERIFY(log.contains(kSource + QStringLiteral(": getPlugin: plugin is not loaded ")));
    }
    // Asking must not load it.
    QVERIFY(!pContainer->IsPluginLoaded(kIdleClsid));
}

void tst_ToolBarPlugins::callSetting_data()
{
    QTest::addColumn<QString>("callVoice");
    QTest::addColumn<QString>("ids");
    QTest::newRow("0") << "0"
                       << "1,2,5";
    QTest::newRow("empty") << ""
                           << "1,2,5";
    QTest::newRow("1") << "1"
                       << "1,2,3,5";
    QTest::newRow("10") << "10"
                        << "1,2,3,5";
    QTest::newRow("01") << "01"
                        << "1,2,5";
    QTest::newRow("2") << "2"
                       << "1,2,5";
}

void tst_ToolBarPlugins::callSetting()
{
    QFETCH(QString, callVoice);
    QFETCH(QString, ids);
    CommonUtils::SetSettings(QStringLiteral("callui"), QStringLiteral("callvoice"), callVoice);
    QCOMPARE(CommonUtils::GetSettings(QStringLiteral("callui"), QStringLiteral("callvoice")),
             callVoice);

    // The item of the plugin that is not loaded uses up a counted place: item 6 is never read.
    const QString path =
        writeToolBarFile(toolbar("5", item(1) + item(2, "HelperPlugin") + item(3, "CallUIPlugin") +
                                          item(4, "IdlePlugin") + item(5) + item(6)));
    QList<ToolItem> list;
    bool group = false;
    QVERIFY(ToolBarLogic::GetXmlData(path, list, group, QString()));
    QCOMPARE(ToolBarXmlText::ids(list), ids);
}

QTEST_GUILESS_MAIN(tst_ToolBarPlugins)
#include "tst_toolbarplugins.moc"

// The rules that switch records on and off for everybody, an operator and a device.
#include "CommonUtils.h"
#include "ContainerProbe.h"

#include <QtTest>

namespace {

std::unique_ptr<ContainerProbe> makeSix(const QStringList &common, const QByteArray &sections)
{
    return makeContainer(pluginsLibFile("Main", numberedPlugins(6)),
                         pluginsConfigFile(common, sections));
}

QString finding(const char *what)
{
    return pcLine("IsCustomizationForDevice",
                  "need to " + QString::fromLatin1(what) + " pPluginInfo->Clsid ()");
}

} // namespace

class TestPluginCustomization : public QObject
{
    Q_OBJECT

private slots:
    void init() { freshConfig(); }

    void precedence_data();
    void precedence();
    void applicationLogsItsSteps();
    void nothingConfiguredAndSingleRecords();
    void isCustomizationForDevice_data();
    void isCustomizationForDevice();
    void operatorAddIsNotCommonForTheCheck();
    void deviceSwitchAppendsToTheLists();
};

// common < device add < device remove; the operator's remove deletes the record.
void TestPluginCustomization::precedence_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QStringList>("enabled");
    QTest::newRow("no device") << "" << QStringList{"C1", "C2", "C3"};
    QTest::newRow("device without section") << "Unknown" << QStringList{"C1", "C2", "C3"};
    QTest::newRow("device adds and removes") << "Dev" << QStringList{"C2", "C3", "C4"};
    QTest::newRow("device adds") << "Other" << QStringList{"C1", "C2", "C3", "C4"};
    QTest::newRow("device names a removed record") << "Ghostly" << QStringList{"C1", "C2", "C3"};
}

void TestPluginCustomization::precedence()
{
    QFETCH(QString, device);
    QFETCH(QStringList, enabled);
    CommonUtils::SetSettings("customize", "operator", "OpA");
    auto container =
        makeSix({"C1", "C2", "C5"}, deviceSection("OpA", {"C3"}, {"C5"}, "customize") +
                                        deviceSection("Dev", {"C4", "C6", "C5"}, {"C1", "C6"}) +
                                        deviceSection("Other", {"C4"}, {}) +
                                        deviceSection("Ghostly", {"C5"}, {"C5"}));
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C2", "C3"}));
    container->ApplyCustomizationForDevice(device);
    QCOMPARE(container->enabledClsids(), enabled);
    QVERIFY(!container->isPluginInList("C5"));
    // Each application starts from scratch.
    container->ApplyCustomizationForDevice("Dev");
    container->ApplyCustomizationForDevice(device);
    QCOMPARE(container->enabledClsids(), enabled);
}

// A device's list is applied most recently filed first; the empty name skips the device step.
void TestPluginCustomization::applicationLogsItsSteps()
{
    auto container = makeSix({"C1"}, deviceSection("Dev", {"C2", "C4"}, {"C6"}));
    LogCapture log;
    container->ApplyCustomizationForDevice("Dev");
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C2", "C4"}));
    QVERIFY(!LogCapture::hasStamp(log.texts().first()));
    QVERIFY(LogCapture::hasStamp(log.texts().filter("updateDeviceCustomization").value(0)));
    // processFromSet's line says "enabling" whatever it does.
    QCOMPARE(
        log.unstamped(),
        (QStringList{
            pcLine("ApplyCustomizationForDevice", "applying customization for device Dev"),
            pcLine("updateCommonOperatorCustomization", "enabling based on common and operator"),
            pcLine("processFromSet", "enabling from set"), "updatePluginInfo: Enabling C1 plugin",
            pcLine("updateDeviceCustomization", "for device Dev!!!"),
            "updatePluginInfo: Enabling C4 plugin", "updatePluginInfo: Enabling C2 plugin",
            "updatePluginInfo: Disabling C6 plugin"}));

    log.clear();
    container->ApplyCustomizationForDevice(QString());
    QCOMPARE(container->enabledClsids(), QStringList{"C1"});
    QCOMPARE(log.texts().first(),
             pcLine("ApplyCustomizationForDevice", "applying customization for device "));
    QVERIFY(log.texts().filter("updateDeviceCustomization").isEmpty());
}

void TestPluginCustomization::nothingConfiguredAndSingleRecords()
{
    auto container = makeContainer(pluginsLibFile("Main", numberedPlugins(6)), "<config/>");
    container->ApplyCustomizationForDevice("Dev");
    QVERIFY(container->enabledClsids().isEmpty());
    QVERIFY(container->GetSettingsPlugins().isEmpty());
    QVERIFY(!container->IsCustomizationForDevice("Dev"));

    LogCapture log;
    container->updatePluginInfo("C1", true);
    container->updatePluginInfo("NONE", true);
    container->removePluginInfo("NONE");
    container->removePluginInfo("C2");
    QCOMPARE(log.texts(), (QStringList{"updatePluginInfo: Enabling C1 plugin", "removed C2"}));
    QCOMPARE(container->enabledClsids(), QStringList{"C1"});
    QVERIFY(!container->isPluginInList("C2"));
    QCOMPARE(container->records().size(), 5);
}

void TestPluginCustomization::isCustomizationForDevice_data()
{
    QTest::addColumn<QStringList>("enabled");
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("line");
    QTest::newRow("flags match") << QStringList{"C1", "C2"} << "DevA" << QString();
    QTest::newRow("1: device add is off") << QStringList{"C1"} << "DevA" << finding("enable");
    QTest::newRow("2: device remove is on")
        << QStringList{"C1", "C2", "C3"} << "DevA" << finding("disable");
    QTest::newRow("3: common is off") << QStringList{"C2"} << "DevA" << finding("disable");
    QTest::newRow("3: common off, device removes it") << QStringList{} << "DevC" << QString();
    QTest::newRow("4: on without reason")
        << QStringList{"C1", "C2", "C4"} << "DevA" << finding("disable");
    QTest::newRow("4: device add is a reason") << QStringList{"C1", "C4"} << "DevB" << QString();
    QTest::newRow("no device, common on") << QStringList{"C1"} << "" << QString();
    QTest::newRow("no device, extra on") << QStringList{"C1", "C2"} << "" << finding("disable");
}

// True (with its one line) at the first finding; nothing is changed.
void TestPluginCustomization::isCustomizationForDevice()
{
    QFETCH(QStringList, enabled);
    QFETCH(QString, device);
    QFETCH(QString, line);
    auto container =
        makeSix({"C1"}, deviceSection("DevA", {"C2"}, {"C3"}) + deviceSection("DevB", {"C4"}, {}) +
                            deviceSection("DevC", {}, {"C1"}));
    container->disableAllPlugins();
    for (const QString &clsid : enabled)
        container->updatePluginInfo(clsid, true);
    LogCapture log;
    QCOMPARE(container->IsCustomizationForDevice(device), !line.isEmpty());
    QCOMPARE(log.texts(), line.isEmpty() ? QStringList() : QStringList{line});
    QCOMPARE(container->enabledClsids(), enabled);
}

// A plugin only the operator switches on counts as one the device would switch off.
void TestPluginCustomization::operatorAddIsNotCommonForTheCheck()
{
    CommonUtils::SetSettings("customize", "operator", "OpA");
    auto container = makeSix({"C1"}, deviceSection("OpA", {"C4"}, {}, "customize") +
                                         deviceSection("DevB", {"C4"}, {}));
    container->ApplyCustomizationForDevice(QString());
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C4"}));
    LogCapture log;
    QVERIFY(container->IsCustomizationForDevice(QString()));
    QCOMPARE(log.texts(), QStringList{finding("disable")});
    // Applying changes nothing, although the check said it would.
    container->ApplyCustomizationForDevice(QString());
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C4"}));
    container->ApplyCustomizationForDevice("DevB");
    QVERIFY(!container->IsCustomizationForDevice("DevB"));
}

void TestPluginCustomization::deviceSwitchAppendsToTheLists()
{
    auto container = makeSix({"C1", "C3"}, deviceSection("DevA", {"C2", "C5"}, {"C3"}) +
                                               deviceSection("DevC", {}, {"C1"}));
    QList<QString> enabled{"keep"};
    QList<QString> disabled{"kept"};
    container->HandleDeviceSwitched("DevA", enabled, disabled);
    QCOMPARE(enabled, (QList<QString>{"keep", "C2", "C5"}));
    QCOMPARE(disabled, (QList<QString>{"kept", "C3"}));
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C2", "C5"}));

    container->HandleDeviceSwitched("DevC", enabled, disabled);
    // A device with the same customization changes nothing.
    container->HandleDeviceSwitched("DevC", enabled, disabled);
    QCOMPARE(enabled, (QList<QString>{"keep", "C2", "C5", "C3"}));
    QCOMPARE(disabled, (QList<QString>{"kept", "C3", "C1", "C2", "C5"}));
}

QTEST_GUILESS_MAIN(TestPluginCustomization)
#include "tst_plugincustomization.moc"

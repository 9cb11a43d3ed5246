// The rules that switch records on and off for everybody, an operator and a device.
#include "CommonUtils.h"
#include "ContainerProbe.h"
#include "LogCapture.h"

#include <QtTest>

namespace {

const QString kSource = QStringLiteral("../../src/core/PluginContainer/PluginContainer");

QList<PluginEntry> sixPlugins()
{
    QList<PluginEntry> plugins;
    for (int i = 1; i <= 6; ++i) {
        const QString n = QString::number(i);
        plugins.append({QStringLiteral("P") + n, QStringLiteral("C") + n, QStringLiteral("u") + n});
    }
    return plugins;
}

void setOperator(const QString &name)
{
    CommonUtils::SetSettings(QStringLiteral("customize"), QStringLiteral("operator"), name);
}

void enableOnly(ContainerProbe &container, const QStringList &clsids)
{
    container.disableAllPlugins();
    for (const QString &clsid : clsids)
        container.updatePluginInfo(clsid, true);
}

QString finding(const char *what)
{
    return kSource + QStringLiteral(": IsCustomizationForDevice: need to ") + QLatin1String(what) +
           QStringLiteral(" pPluginInfo->Clsid ()");
}

} // namespace

class TestPluginCustomization : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        TestFiles::useFreshSettings();
        TestFiles::removeAppPath(QStringLiteral("/config"));
    }

    void precedence_data();
    void precedence();
    void emptyDeviceAppliesExactlyTheCommonSet();
    void deviceListIsAppliedMostRecentFirst();
    void nothingConfiguredLeavesAllDisabled();
    void updateAndRemoveRecords();
    void disableAllReachesDuplicates();
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
    QTest::newRow("device names only unknown") << "Ghostly" << QStringList{"C1", "C2", "C3"};
}

void TestPluginCustomization::precedence()
{
    QFETCH(QString, device);
    QFETCH(QStringList, enabled);
    setOperator(QStringLiteral("OpA"));
    const QByteArray sections = customizeSection("OpA", {"C3"}, {"C5"}) +
                                deviceSection("Dev", {"C4", "C6", "C5"}, {"C1", "C6"}) +
                                deviceSection("Other", {"C4"}, {}) +
                                deviceSection("Ghostly", {"C5"}, {"C5"});
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), sixPlugins()),
                                   pluginsConfigFile({"C1", "C2", "C5"}, sections));
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C2", "C3"}));

    container->ApplyCustomizationForDevice(device);
    QCOMPARE(container->enabledClsids(), enabled);
    QVERIFY(!container->isPluginInList(QStringLiteral("C5")));

    // Each application starts from scratch.
    container->ApplyCustomizationForDevice(QStringLiteral("Dev"));
    container->ApplyCustomizationForDevice(device);
    QCOMPARE(container->enabledClsids(), enabled);
}

void TestPluginCustomization::emptyDeviceAppliesExactlyTheCommonSet()
{
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), sixPlugins()),
                                   pluginsConfigFile({"C2"}, deviceSection("Dev", {"C4"}, {"C2"})));
    container->ApplyCustomizationForDevice(QStringLiteral("Dev"));
    QCOMPARE(container->enabledClsids(), QStringList{QStringLiteral("C4")});

    LogCapture log;
    container->ApplyCustomizationForDevice(QString());
    QCOMPARE(container->enabledClsids(), QStringList{QStringLiteral("C2")});
    QVERIFY(log.contains(
        kSource +
        QStringLiteral(": ApplyCustomizationForDevice: applying customization for device ")));
    QVERIFY(log.containsUnstamped(
        kSource +
        QStringLiteral(
            ": updateCommonOperatorCustomization: enabling based on common and operator")));
    QVERIFY(log.containsUnstamped(kSource + QStringLiteral(": processFromSet: enabling from set")));
    for (const QString &text : log.texts())
        QVERIFY2(!text.contains(QLatin1String("updateDeviceCustomization")), qPrintable(text));
}

void TestPluginCustomization::deviceListIsAppliedMostRecentFirst()
{
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"), sixPlugins()),
                      pluginsConfigFile({}, deviceSection("Dev", {"C2", "C4"}, {"C6"})));
    LogCapture log;
    container->ApplyCustomizationForDevice(QStringLiteral("Dev"));
    const QString stamped =
        log.texts().filter(QStringLiteral("updateDeviceCustomization")).value(0);
    QVERIFY(LogCapture::hasStamp(stamped));
    QCOMPARE(LogCapture::stripStamp(stamped),
             kSource + QStringLiteral(": updateDeviceCustomization: for device Dev!!!"));
    QVERIFY(log.containsInOrder({QStringLiteral("updatePluginInfo: Enabling C4 plugin"),
                                 QStringLiteral("updatePluginInfo: Enabling C2 plugin"),
                                 QStringLiteral("updatePluginInfo: Disabling C6 plugin")}));
    // processFromSet's line says "enabling" whatever it does; nothing of the set was switched.
    QCOMPARE(container->enabledClsids(), (QStringList{"C2", "C4"}));
}

void TestPluginCustomization::nothingConfiguredLeavesAllDisabled()
{
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"), sixPlugins()), "<config/>");
    container->ApplyCustomizationForDevice(QStringLiteral("Dev"));
    QVERIFY(container->enabledClsids().isEmpty());
    QVERIFY(container->GetSettingsPlugins().isEmpty());
    QVERIFY(!container->IsCustomizationForDevice(QStringLiteral("Dev")));
}

void TestPluginCustomization::updateAndRemoveRecords()
{
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"), sixPlugins()), pluginsConfigFile({}));
    LogCapture log;
    container->updatePluginInfo(QStringLiteral("C1"), true);
    container->updatePluginInfo(QStringLiteral("NONE"), true);
    container->removePluginInfo(QStringLiteral("NONE"));
    container->removePluginInfo(QStringLiteral("C2"));
    QCOMPARE(log.texts(), (QStringList{"updatePluginInfo: Enabling C1 plugin", "removed C2"}));
    QVERIFY(!container->isPluginInList(QStringLiteral("C2")));
    QCOMPARE(container->records().size(), 5);
    QCOMPARE(container->enabledClsids(), QStringList{QStringLiteral("C1")});
}

void TestPluginCustomization::disableAllReachesDuplicates()
{
    auto container = makeContainer(
        pluginsLibFile(QStringLiteral("Main"), {{"First", "DUP", "u1"}, {"Second", "DUP", "u2"}}),
        pluginsConfigFile({"DUP"}));
    container->records().at(0)->SetEnabled(true);
    QCOMPARE(container->enabledClsids(), (QStringList{"DUP", "DUP"}));
    container->disableAllPlugins();
    QVERIFY(container->enabledClsids().isEmpty());

    // Removal takes the hash's record, the later one, out of the list.
    container->removePluginInfo(QStringLiteral("DUP"));
    QCOMPARE(container->records().size(), 1);
    QCOMPARE(container->records().at(0)->Name(), QStringLiteral("First"));
}

void TestPluginCustomization::isCustomizationForDevice_data()
{
    QTest::addColumn<QStringList>("enabled");
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QString>("line");
    QTest::newRow("flags match") << QStringList{"C1", "C2"} << "DevA" << false << QString();
    QTest::newRow("1: device add is off")
        << QStringList{"C1"} << "DevA" << true << finding("enable");
    QTest::newRow("2: device remove is on")
        << QStringList{"C1", "C2", "C3"} << "DevA" << true << finding("disable");
    QTest::newRow("3: common is off") << QStringList{"C2"} << "DevA" << true << finding("disable");
    QTest::newRow("3: common off, device removes it")
        << QStringList{} << "DevC" << false << QString();
    QTest::newRow("4: on without reason")
        << QStringList{"C1", "C2", "C4"} << "DevA" << true << finding("disable");
    QTest::newRow("4: device add is a reason")
        << QStringList{"C1", "C4"} << "DevB" << false << QString();
    QTest::newRow("no device, common on") << QStringList{"C1"} << "" << false << QString();
    QTest::newRow("no device, extra on")
        << QStringList{"C1", "C2"} << "" << true << finding("disable");
}

void TestPluginCustomization::isCustomizationForDevice()
{
    QFETCH(QStringList, enabled);
    QFETCH(QString, device);
    QFETCH(bool, result);
    QFETCH(QString, line);
    const QByteArray sections = deviceSection("DevA", {"C2"}, {"C3"}) +
                                deviceSection("DevB", {"C4"}, {}) +
                                deviceSection("DevC", {}, {"C1"});
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), sixPlugins()),
                                   pluginsConfigFile({"C1"}, sections));
    enableOnly(*container, enabled);

    LogCapture log;
    QCOMPARE(container->IsCustomizationForDevice(device), result);
    QCOMPARE(log.texts(), line.isEmpty() ? QStringList() : QStringList{line});
    QCOMPARE(container->enabledClsids(), enabled);
}

// A plugin only the operator switches on counts as one the device would switch off.
void TestPluginCustomization::operatorAddIsNotCommonForTheCheck()
{
    setOperator(QStringLiteral("OpA"));
    auto container =
        makeContainer(pluginsLibFile(QStringLiteral("Main"), sixPlugins()),
                      pluginsConfigFile({"C1"}, customizeSection("OpA", {"C4"}, {}) +
                                                    deviceSection("DevB", {"C4"}, {})));
    container->ApplyCustomizationForDevice(QString());
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C4"}));
    LogCapture log;
    QVERIFY(container->IsCustomizationForDevice(QString()));
    QCOMPARE(log.texts(), QStringList{finding("disable")});
    // Applying changes nothing, although the check said it would.
    container->ApplyCustomizationForDevice(QString());
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C4"}));

    container->ApplyCustomizationForDevice(QStringLiteral("DevB"));
    QVERIFY(!container->IsCustomizationForDevice(QStringLiteral("DevB")));
}

void TestPluginCustomization::deviceSwitchAppendsToTheLists()
{
    const QByteArray sections =
        deviceSection("DevA", {"C2", "C5"}, {"C3"}) + deviceSection("DevC", {}, {"C1"});
    auto container = makeContainer(pluginsLibFile(QStringLiteral("Main"), sixPlugins()),
                                   pluginsConfigFile({"C1", "C3"}, sections));
    QList<QString> enabled{QStringLiteral("keep")};
    QList<QString> disabled{QStringLiteral("kept")};

    container->HandleDeviceSwitched(QStringLiteral("DevA"), enabled, disabled);
    QCOMPARE(enabled, (QList<QString>{"keep", "C2", "C5"}));
    QCOMPARE(disabled, (QList<QString>{"kept", "C3"}));
    QCOMPARE(container->enabledClsids(), (QStringList{"C1", "C2", "C5"}));

    container->HandleDeviceSwitched(QStringLiteral("DevC"), enabled, disabled);
    QCOMPARE(enabled, (QList<QString>{"keep", "C2", "C5", "C3"}));
    QCOMPARE(disabled, (QList<QString>{"kept", "C3", "C1", "C2", "C5"}));

    // A device with the same customization changes nothing.
    container->HandleDeviceSwitched(QStringLiteral("DevC"), enabled, disabled);
    container->HandleDeviceSwitched(QStringLiteral("DevC"), enabled, disabled);
    QCOMPARE(enabled.size(), 4);
    QCOMPARE(disabled.size(), 5);
}

QTEST_GUILESS_MAIN(TestPluginCustomization)
#include "tst_plugincustomization.moc"

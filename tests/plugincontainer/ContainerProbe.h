#ifndef LINKDECK_TESTS_CONTAINERPROBE_H
#define LINKDECK_TESTS_CONTAINERPROBE_H

#include "PluginContainer.h"
#include "TestFiles.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTest>

#include <memory>

// The container with its internal operations and state opened up for the tests.
class ContainerProbe : public PluginContainer
{
public:
    using PluginContainer::PluginContainer;

    using PluginContainer::addToDisEnableList;
    using PluginContainer::disableAllPlugins;
    using PluginContainer::getDeviceName;
    using PluginContainer::getPlugin;
    using PluginContainer::isPluginInList;
    using PluginContainer::populatePluginInfo;
    using PluginContainer::populatePluginsConfig;
    using PluginContainer::removePluginInfo;
    using PluginContainer::unloadAllPlugins;
    using PluginContainer::updateDeviceCustomization;
    using PluginContainer::updatePluginInfo;

    QList<PluginInfo *> records() const { return *m_pListPlugins; }
    PluginInfo *record(const QString &clsid) const { return m_pHashPlugins->value(clsid); }
    int hashSize() const { return m_pHashPlugins->size(); }
    QSet<QString> commonSet() const { return *m_pSetCommon; }
    QStringList enableList(const QString &owner) const { return m_pEnableList->values(owner); }
    QStringList disableList(const QString &owner) const { return m_pDisableList->values(owner); }
    bool deviceMgrInitialized() const { return m_bDeviceMgrInitialized; }

    // Clsids of the enabled records, in file order.
    QStringList enabledClsids() const
    {
        QStringList clsids;
        for (const PluginInfo *info : *m_pListPlugins) {
            if (info->IsEnabled())
                clsids.append(info->Clsid());
        }
        return clsids;
    }
};

// One "plugin" element of a plugin library file.
struct PluginEntry
{
    QString name;
    QString clsid;
    QString url;
    bool active = true;
    bool isStatic = false;
    bool settingTitle = false;
    int type = 0;
};

inline QByteArray pluginElement(const PluginEntry &p)
{
    auto flag = [](bool b) { return b ? QByteArray("true") : QByteArray("false"); };
    return "  <plugin>\n    <name>" + p.name.toUtf8() + "</name>\n    <clsid>" + p.clsid.toUtf8() +
           "</clsid>\n    <url>" + p.url.toUtf8() + "</url>\n    <active>" + flag(p.active) +
           "</active>\n    <type>" + QByteArray::number(p.type) + "</type>\n    <setting_title>" +
           flag(p.settingTitle) + "</setting_title>\n    <static>" + flag(p.isStatic) +
           "</static>\n  </plugin>\n";
}

inline QByteArray pluginsLibFile(const QString &mainPlugin, const QList<PluginEntry> &plugins)
{
    QByteArray xml = "<?xml version=\"1.0\"?>\n<plugins>\n  <mainplugin>" + mainPlugin.toUtf8() +
                     "</mainplugin>\n";
    for (const PluginEntry &p : plugins)
        xml += pluginElement(p);
    return xml + "</plugins>\n";
}

// "common" items, then any further sections given as raw XML.
inline QByteArray pluginsConfigFile(const QStringList &common, const QByteArray &sections = {})
{
    QByteArray xml = "<?xml version=\"1.0\"?>\n<config>\n  <common>\n";
    for (const QString &clsid : common)
        xml += "    <item clsid=\"" + clsid.toUtf8() + "\"/>\n";
    return xml + "  </common>\n" + sections + "</config>\n";
}

inline QByteArray deviceSection(const QString &device, const QStringList &add,
                                const QStringList &remove, const char *element = "device")
{
    QByteArray xml =
        QByteArray("  <") + element + " name=\"" + device.toUtf8() + "\">\n    <plugin>\n";
    for (const QString &clsid : add)
        xml += "      <add clsid=\"" + clsid.toUtf8() + "\"/>\n";
    for (const QString &clsid : remove)
        xml += "      <remove clsid=\"" + clsid.toUtf8() + "\"/>\n";
    return xml + "    </plugin>\n  </" + element + ">\n";
}

inline QByteArray customizeSection(const QString &op, const QStringList &add,
                                   const QStringList &remove)
{
    return deviceSection(op, add, remove, "customize");
}

inline QString appConfigPath(const QString &file)
{
    return TestFiles::appDir() + QStringLiteral("/config/") + file;
}

// Writes both files into the application directory and builds a container from them, waiting
// until its initialisation thread has applied the device customization.
inline std::unique_ptr<ContainerProbe>
makeContainer(const QByteArray &pluginsLib, const QByteArray &pluginsConfig, int waitMs = 5000)
{
    TestFiles::writeAppFile(QStringLiteral("/config/pluginslib.xml"), pluginsLib);
    TestFiles::writeAppFile(QStringLiteral("/config/PluginsConfig.xml"), pluginsConfig);
    auto container =
        std::make_unique<ContainerProbe>(appConfigPath(QStringLiteral("pluginslib.xml")),
                                         appConfigPath(QStringLiteral("PluginsConfig.xml")), true);
    static_cast<void>(
        QTest::qWaitFor([&] { return container->IsPluginsConfigInitialized(); }, waitMs));
    return container;
}

#endif // LINKDECK_TESTS_CONTAINERPROBE_H

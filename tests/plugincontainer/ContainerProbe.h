#ifndef LINKDECK_TESTS_CONTAINERPROBE_H
#define LINKDECK_TESTS_CONTAINERPROBE_H

#include "LogCapture.h"
#include "PluginContainer.h"
#include "TestFiles.h"

#include <QRegularExpression>
#include <QTest>

#include <memory>

const QString kSource = QStringLiteral("../../src/core/PluginContainer/PluginContainer");

inline QString pcLine(const char *function, const QString &rest)
{
    return kSource + ": " + function + ": " + rest;
}

// What the test plugins logged, in order: their line "@Load:Alpha" gives "Load:Alpha".
inline QStringList events(const LogCapture &log, const QString &prefix = QString())
{
    return log.texts()
        .filter(QRegularExpression("^@" + prefix))
        .replaceInStrings(QRegularExpression("^@"), "");
}

// The container with its internal operations and state opened up for the tests.
class ContainerProbe : public PluginContainer
{
public:
    using PluginContainer::disableAllPlugins;
    using PluginContainer::getDeviceName;
    using PluginContainer::getPlugin;
    using PluginContainer::isPluginInList;
    using PluginContainer::PluginContainer;
    using PluginContainer::populatePluginInfo;
    using PluginContainer::removePluginInfo;
    using PluginContainer::unloadAllPlugins;
    using PluginContainer::updatePluginInfo;

    QList<PluginInfo *> records() const { return *m_pListPlugins; }
    PluginInfo *record(const QString &clsid) const { return m_pHashPlugins->value(clsid); }
    int hashSize() const { return m_pHashPlugins->size(); }
    QSet<QString> commonSet() const { return *m_pSetCommon; }
    QStringList enableList(const QString &owner) const { return m_pEnableList->values(owner); }
    QStringList disableList(const QString &owner) const { return m_pDisableList->values(owner); }
    bool deviceMgrInitialized() const { return m_bDeviceMgrInitialized; }
    QStringList enabledClsids() const
    {
        QStringList clsids;
        for (const PluginInfo *info : *m_pListPlugins)
            if (info->IsEnabled())
                clsids.append(info->Clsid());
        return clsids;
    }
    // "name:clsid:url:type:flags" per record in file order, or "clsid=flags" when short; flags
    // a(ctive) s(tatic) t (setting title) e(nabled) l(oaded) i(nitialized).
    QString recordsText(bool shortly = false) const
    {
        QStringList texts;
        for (const PluginInfo *i : *m_pListPlugins) {
            QString flags;
            const bool set[] = {i->IsActive(),  i->IsStatic(), i->IsSettingTitle(),
                                i->IsEnabled(), i->IsLoaded(), i->IsInitialized()};
            for (int f = 0; f < 6; ++f)
                if (set[f])
                    flags += QString("asteli")[f];
            texts.append(shortly ? i->Clsid() + '=' + flags
                                 : QStringList{i->Name(), i->Clsid(), i->Url(),
                                               QString::number(i->Type()), flags}
                                       .join(':'));
        }
        return texts.join(shortly ? " " : "; ");
    }
};

struct PluginEntry
{
    QString name, clsid, url;
    bool active = true, isStatic = false;
};

inline QByteArray pluginsLibFile(const QString &mainPlugin, const QList<PluginEntry> &plugins)
{
    auto flag = [](bool b) { return QByteArray(b ? "true" : "false"); };
    QByteArray xml = "<plugins><mainplugin>" + mainPlugin.toUtf8() + "</mainplugin>\n";
    for (const PluginEntry &p : plugins)
        xml += "<plugin><name>" + p.name.toUtf8() + "</name><clsid>" + p.clsid.toUtf8() +
               "</clsid><url>" + p.url.toUtf8() + "</url><active>" + flag(p.active) +
               "</active><type>0</type><setting_title>false</setting_title><static>" +
               flag(p.isStatic) + "</static></plugin>\n";
    return xml + "</plugins>\n";
}

inline QByteArray items(const char *element, const QStringList &clsids)
{
    QByteArray xml;
    for (const QString &clsid : clsids)
        xml += "<" + QByteArray(element) + " clsid=\"" + clsid.toUtf8() + "\"/>\n";
    return xml;
}

// "common" items, then further sections given as XML.
inline QByteArray pluginsConfigFile(const QStringList &common, const QByteArray &sections = {})
{
    return "<config><common>\n" + items("item", common) + "</common>\n" + sections + "</config>\n";
}

inline QByteArray deviceSection(const QString &device, const QStringList &add,
                                const QStringList &remove, const QByteArray &element = "device")
{
    return "<" + element + " name=\"" + device.toUtf8() + "\"><plugin>\n" + items("add", add) +
           items("remove", remove) + "</plugin></" + element + ">\n";
}

inline QString appConfigPath(const QString &file)
{
    return TestFiles::appDir() + "/config/" + file;
}

inline void freshConfig()
{
    TestFiles::useFreshSettings();
    TestFiles::removeAppPath("/config");
}

// Writes both files and builds a container from them, waiting until its initialisation thread
// has applied the device customization.
inline std::unique_ptr<ContainerProbe>
makeContainer(const QByteArray &pluginsLib, const QByteArray &pluginsConfig, int waitMs = 5000)
{
    TestFiles::writeAppFile("/config/pluginslib.xml", pluginsLib);
    TestFiles::writeAppFile("/config/PluginsConfig.xml", pluginsConfig);
    auto container = std::make_unique<ContainerProbe>(appConfigPath("pluginslib.xml"),
                                                      appConfigPath("PluginsConfig.xml"), true);
    static_cast<void>(
        QTest::qWaitFor([&] { return container->IsPluginsConfigInitialized(); }, waitMs));
    return container;
}

#endif // LINKDECK_TESTS_CONTAINERPROBE_H

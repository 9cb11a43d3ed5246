// The plugin library file and the customization file, given as one input split at "@@SPLIT@@".
#include "FuzzSupport.h"
#include "PluginContainer.h"

#include <QThread>

namespace {

// Built once without files (so without a device manager to load); every input is then read by
// the container's own readers into emptied tables, and the rules of each device it names are
// applied.
class ReaderProbe : public PluginContainer
{
public:
    ReaderProbe()
        : PluginContainer(QString(), QString(), true)
    {
        while (!IsPluginsConfigInitialized())
            QThread::msleep(1);
    }

    void read(const QString &pluginsFile, const QString &configFile)
    {
        m_pHashPlugins->clear();
        qDeleteAll(*m_pListPlugins);
        m_pListPlugins->clear();
        m_pSetCommon->clear();
        m_pEnableList->clear();
        m_pDisableList->clear();
        m_strMainPlugin.clear();
        m_strCustomizeName = QStringLiteral("nordtel");

        populatePluginInfo(pluginsFile);
        populatePluginsConfig(configFile);
        updateCommonOperatorCustomization();
        const QList<QString> devices = m_pEnableList->uniqueKeys() + m_pDisableList->uniqueKeys();
        for (const QString &device : devices.mid(0, 8)) {
            QList<QString> enabled, disabled;
            IsCustomizationForDevice(device);
            HandleDeviceSwitched(device, enabled, disabled);
        }
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static ReaderProbe *probe = new ReaderProbe;
    const QByteArray input = Fuzz::bytes(data, size);
    const int split = input.indexOf("@@SPLIT@@");
    probe->read(Fuzz::writeAppFile(QStringLiteral("config/pluginslib.xml"), input.left(split)),
                Fuzz::writeAppFile(QStringLiteral("config/PluginsConfig.xml"),
                                   split < 0 ? QByteArray() : input.mid(split + 9)));
    return 0;
}

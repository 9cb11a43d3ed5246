// The test plugins, built once per url with the options of pc_test_plugin (CMakeLists.txt); each
// logs "@Load:<tag>", "@Initialize:<tag>", ... As the device manager it runs the active backend's
// detection.
#include "PluginInterfaces.h"

#include <NexoBackend.h>
#include <NexoSim.h>

#include <QThread>

#define NOTE(what) qDebug("@%s:%s", what, PLUGIN_TAG)

#ifdef PLUGIN_NO_BASE
class TestPlugin : public QObject, public ILayout
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ILayout_iid)
    Q_INTERFACES(ILayout)

public:
    TestPlugin() { NOTE("Load"); }
    ~TestPlugin() override { NOTE("Unload"); }
    QWidget *GetLayoutWidget() override { return nullptr; }
};
#else
class TestPlugin : public QObject,
                   public IBasePlugin,
                   public IDeviceMgr,
                   public IUIPlugin,
                   public IMainFrameUIService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IDeviceMgr IUIPlugin IMainFrameUIService)

public:
    TestPlugin() { NOTE("Load"); }
    ~TestPlugin() override { NOTE("Unload"); }

    void Release() override { NOTE("Release"); }
    int GetLastError() override { return 0; }
    bool Initialize() override
    {
        NOTE("Initialize");
        return PLUGIN_INIT_RESULT;
    }
    bool QueryInterface(int number, QObject **ppInterface) override
    {
        qDebug("@QueryInterface:%s:%d", PLUGIN_TAG, number);
        *ppInterface = number == PLUGIN_INTERFACE ? this : nullptr;
        return *ppInterface;
    }

    void StartDetectDevice() override
    {
        qDebug("@StartDetectDevice:%s", QThread::currentThread()->metaObject()->className());
        NEXO_Backend_StartDetection(); // the simulator's NexoSim_StartDetection, or ModemManager's
    }
    QString GetLastUsedDevice() override
    {
        NOTE("GetLastUsedDevice");
        return QStringLiteral("ModemY");
    }

    void Create(QWidget *, const QRect &) override {}
    QWidget *GetMainWindow() override { return nullptr; }
    QString GetLayoutPluginClsid() override { return QString(); }
    bool IsCustomTitleBar() override { return false; }
    int GetTitleHeight() override { return 0; }
    int GetFrameWidth() override { return 0; }
};
#endif

#include "TestPlugin.moc"

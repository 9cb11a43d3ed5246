// The shortcut tests' plugins, built once per role. SHORTCUT_TAG names the plugin's window,
// layout widget and last used device; MakeCall logs "<tag>: MakeCall <number> <flag>". Built with
// SHORTCUT_BARE it answers every interface number with an object implementing none of them.
#include "PluginInterfaces.h"

#include <NexoSim.h>

#include <QPointer>
#include <QWidget>

class ShortcutPlugin : public QObject,
                       public IBasePlugin,
                       public IUIPlugin,
                       public IMainFrameUIService,
                       public IDeviceMgr,
                       public ILayout,
                       public ICallUIPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IUIPlugin IMainFrameUIService IDeviceMgr ILayout ICallUIPlugin)
public:
    void Release() override { delete m_pWidget; }
    int GetLastError() override { return 0; }
    bool Initialize() override { return true; }
    bool QueryInterface(int, QObject **ppInterface) override
    {
#ifdef SHORTCUT_BARE
        *ppInterface = &m_bare;
#else
        *ppInterface = this;
#endif
        return true;
    }
    void Create(QWidget *, const QRect &) override { GetLayoutWidget(); }
    QWidget *GetMainWindow() override { return m_pWidget; }
    QString GetLayoutPluginClsid() override { return QStringLiteral(SHORTCUT_LAYOUT_CLSID); }
    bool IsCustomTitleBar() override { return false; }
    int GetTitleHeight() override { return 0; }
    int GetFrameWidth() override { return 0; }
    // The container waits for the device after this; the simulator's detection ends the wait.
    void StartDetectDevice() override { NexoSim_StartDetection(); }
    QString GetLastUsedDevice() override { return QStringLiteral(SHORTCUT_TAG); }
    QWidget *GetLayoutWidget() override
    {
        if (!m_pWidget) {
            m_pWidget = new QWidget;
            m_pWidget->setObjectName(QStringLiteral(SHORTCUT_TAG));
        }
        return m_pWidget;
    }
    void MakeCall(const QString &strNumber, int iFlag) override
    {
        qDebug("%s: MakeCall %s %d", SHORTCUT_TAG, qPrintable(strNumber), iFlag);
    }

private:
    QObject m_bare;
    QPointer<QWidget> m_pWidget;
};

#include "ShortcutPlugin.moc"

#ifndef LINKDECK_PLUGININTERFACES_H
#define LINKDECK_PLUGININTERFACES_H

#include "IPluginContainer.h"

#include <QObject>
#include <QRect>
#include <QString>

class QWidget;

// Interface numbers passed to IPluginContainer::GetPlugin and IBasePlugin::QueryInterface.
enum LinkDeckInterfaceNumber {
    LD_INTERFACE_ROOT = 0,
    LD_INTERFACE_DEVICE_MGR = 4097, // also the call plugins' interface
    LD_INTERFACE_MAIN_FRAME_SERVICE = 4113,
    LD_INTERFACE_NOTIFY_SERVICE = 8209
};

// Every plugin's root object implements this.
class IBasePlugin : public IBaseInterface
{
public:
    virtual bool Initialize() = 0;
    // Hands out the object implementing the numbered interface; the caller qobject_casts it.
    virtual bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) = 0;
};

class IDeviceMgr
{
public:
    virtual ~IDeviceMgr() {}
    virtual void StartDetectDevice() = 0;
    virtual QString GetLastUsedDevice() = 0;
};

class IUIPlugin
{
public:
    virtual ~IUIPlugin() {}
    virtual void Create(QWidget *pParent, const QRect &rect) = 0;
};

class IMainFrameUIService
{
public:
    virtual ~IMainFrameUIService() {}
    virtual QWidget *GetMainWindow() = 0;
    virtual QString GetLayoutPluginClsid() = 0;
    virtual bool IsCustomTitleBar() = 0;
    virtual int GetTitleHeight() = 0;
    virtual int GetFrameWidth() = 0;
};

class INotifyService
{
public:
    virtual ~INotifyService() {}
    virtual void StopThreads() = 0;
};

class ILayout
{
public:
    virtual ~ILayout() {}
    virtual QWidget *GetLayoutWidget() = 0;
};

class ICallUIPlugin
{
public:
    virtual ~ICallUIPlugin() {}
    virtual void MakeCall(const QString &strNumber, int iFlag) = 0;
};

#define IBasePlugin_iid "com.velmora.linkdeck.plugin.IBasePlugin"
#define IDeviceMgr_iid "com.velmora.linkdeck.plugin.IDeviceMgr"
#define IUIPlugin_iid "com.velmora.linkdeck.plugin.IUIPlugin"
#define IMainFrameUIService_iid "com.velmora.linkdeck.plugin.IMainFrameUIService"
#define INotifyService_iid "com.velmora.linkdeck.plugin.INotifyService"
#define ILayout_iid "com.velmora.linkdeck.plugin.ILayout"
#define ICallUIPlugin_iid "com.velmora.linkdeck.plugin.ICallUIPlugin"

Q_DECLARE_INTERFACE(IBasePlugin, IBasePlugin_iid)
Q_DECLARE_INTERFACE(IDeviceMgr, IDeviceMgr_iid)
Q_DECLARE_INTERFACE(IUIPlugin, IUIPlugin_iid)
Q_DECLARE_INTERFACE(IMainFrameUIService, IMainFrameUIService_iid)
Q_DECLARE_INTERFACE(INotifyService, INotifyService_iid)
Q_DECLARE_INTERFACE(ILayout, ILayout_iid)
Q_DECLARE_INTERFACE(ICallUIPlugin, ICallUIPlugin_iid)

#endif // LINKDECK_PLUGININTERFACES_H

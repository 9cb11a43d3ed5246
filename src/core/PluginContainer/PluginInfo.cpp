#include "PluginContainer.h"

#include <QPluginLoader>

PluginInfo::PluginInfo(QString name, QString clsid, QString url, int type, bool active,
                       bool isStatic, bool settingTitle, bool loaded)
    : m_strName(name)
    , m_strClsid(clsid)
    , m_strUrl(url)
    , m_bActive(active)
    , m_bStatic(isStatic)
    , m_bSettingTitle(settingTitle)
    , m_bLoaded(loaded)
    , m_iType(type)
{}

PluginInfo::~PluginInfo()
{
    delete m_pLoader;
}

void PluginInfo::SetLoader(QPluginLoader *loader)
{
    if (loader != m_pLoader)
        delete m_pLoader;
    m_pLoader = loader;
}

// Questions about the records: by class identifier, by name, by type.
#include "PluginContainer.h"

#include <QMutexLocker>

bool PluginContainer::isPluginInList(QString clsid)
{
    QMutexLocker locker(&m_mutex);
    return m_pHashPlugins->contains(clsid);
}

bool PluginContainer::IsPluginLoaded(QString clsid)
{
    QMutexLocker locker(&m_mutex);
    const PluginInfo *info = m_pHashPlugins->value(clsid);
    return info && info->IsLoaded();
}

int PluginContainer::GetPluginType(QString clsid)
{
    QMutexLocker locker(&m_mutex);
    const PluginInfo *info = m_pHashPlugins->value(clsid);
    return info ? info->Type() : -1;
}

QString PluginContainer::getPluginNameByClsid(QString clsid)
{
    QMutexLocker locker(&m_mutex);
    const PluginInfo *info = m_pHashPlugins->value(clsid);
    return info ? info->Name() : QString();
}

QString PluginContainer::GetPluginNameByClsid(QString clsid)
{
    return getPluginNameByClsid(clsid);
}

// Every match overwrites the result: of two records with one name, the later one wins.
QString PluginContainer::GetClsidByName(QString name)
{
    QMutexLocker locker(&m_mutex);
    QString clsid;
    for (const PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (info && info->Name() == name)
            clsid = info->Clsid();
    }
    return clsid;
}

QList<QString> PluginContainer::GetPluginClsidsByType(int type)
{
    QMutexLocker locker(&m_mutex);
    QList<QString> clsids;
    for (const PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (info->Type() == type)
            clsids.append(info->Clsid());
    }
    return clsids;
}

QList<QString> PluginContainer::GetLoadedPluginClsids()
{
    QMutexLocker locker(&m_mutex);
    QList<QString> clsids;
    for (const PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (info->IsLoaded())
            clsids.append(info->Clsid());
    }
    return clsids;
}

QList<QString> PluginContainer::GetSettingsPlugins()
{
    QMutexLocker locker(&m_mutex);
    QList<QString> clsids;
    for (const PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (info->IsEnabled() && info->IsSettingTitle())
            clsids.append(info->Clsid());
    }
    return clsids;
}

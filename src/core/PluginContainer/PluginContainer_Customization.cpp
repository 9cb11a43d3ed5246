// The rules that switch records on and off: common set, operator and device sections.
#include "PluginContainer.h"

#include "ConfigObserver.h"
#include "ContainerLog.h"

#include <QMutexLocker>

namespace {
const QString kCommonOwner = QStringLiteral("common");
}

void PluginContainer::updatePluginInfo(QString clsid, bool enable)
{
    QMutexLocker locker(&m_mutex);
    PluginInfo *info = m_pHashPlugins->value(clsid);
    if (!info)
        return;
    qCDebug(lcPlugins, "updatePluginInfo: %s %s plugin", enable ? "Enabling" : "Disabling",
            LogLine::arg(clsid).constData());
    info->SetEnabled(enable);
    if (m_pObserver)
        m_pObserver->flagSet(clsid, enable);
}

// Both walks run: records sharing a clsid are only reachable all together through the list.
void PluginContainer::disableAllPlugins()
{
    QMutexLocker locker(&m_mutex);
    for (PluginInfo *info : qAsConst(*m_pHashPlugins))
        info->SetEnabled(false);
    for (PluginInfo *info : qAsConst(*m_pListPlugins))
        info->SetEnabled(false);
}

void PluginContainer::removePluginInfo(QString clsid)
{
    QMutexLocker locker(&m_mutex);
    PluginInfo *info = m_pHashPlugins->value(clsid);
    if (!info)
        return;
    m_pListPlugins->removeOne(info);
    m_pHashPlugins->remove(clsid);
    delete info;
    qCDebug(lcPlugins, "removed %s", LogLine::arg(clsid).constData());
    if (m_pObserver)
        m_pObserver->recordRemoved(clsid);
}

void PluginContainer::processFromSet(QSet<QString> *set, bool enable)
{
    qCDebug(lcPlugins, "%s: enabling from set",
            LogLine::stampedPrefix(kContainerSource, "processFromSet").constData());
    if (m_pObserver)
        m_pObserver->ruleStarted(QStringLiteral("common"), QString());
    for (const QString &clsid : qAsConst(*set))
        updatePluginInfo(clsid, enable);
}

// values() gives the most recently filed clsid first.
void PluginContainer::processFromList(QString key, QMultiHash<QString, QString> *list, bool enable)
{
    if (m_pObserver)
        m_pObserver->ruleStarted(enable ? QStringLiteral("add") : QStringLiteral("remove"), key);
    const QList<QString> clsids = list->values(key);
    for (const QString &clsid : clsids)
        updatePluginInfo(clsid, enable);
}

void PluginContainer::updateCommonOperatorCustomization()
{
    qCDebug(
        lcPlugins, "%s: enabling based on common and operator",
        LogLine::stampedPrefix(kContainerSource, "updateCommonOperatorCustomization").constData());
    processFromSet(m_pSetCommon, true);
}

void PluginContainer::updateDeviceCustomization(QString device)
{
    if (device.isEmpty())
        return;
    qCDebug(lcPlugins, "%s: for device %s!!!",
            LogLine::stampedPrefix(kContainerSource, "updateDeviceCustomization").constData(),
            LogLine::arg(device).constData());
    processFromList(device, m_pEnableList, true);
    processFromList(device, m_pDisableList, false);
}

// Takes no lock of its own: each record's update takes it, so another thread may see the
// recomputation half done.
void PluginContainer::ApplyCustomizationForDevice(QString device)
{
    qCDebug(lcPlugins, "%s: applying customization for device %s",
            LogLine::prefix(kContainerSource, "ApplyCustomizationForDevice").constData(),
            LogLine::arg(device).constData());
    disableAllPlugins();
    updateCommonOperatorCustomization();
    updateDeviceCustomization(device);
}

// Compares with the "common" entries of the enable list, not with the common set: a plugin that
// only the operator switches on counts as one the device would switch off.
bool PluginContainer::IsCustomizationForDevice(QString device)
{
    QMutexLocker locker(&m_mutex);
    const QByteArray prefix = LogLine::prefix(kContainerSource, "IsCustomizationForDevice");
    const QList<QString> deviceEnables = m_pEnableList->values(device);
    const QList<QString> deviceDisables = m_pDisableList->values(device);
    const QList<QString> commonEnables = m_pEnableList->values(kCommonOwner);

    auto anyRecord = [this](const QString &clsid, bool enabled) {
        for (const PluginInfo *info : qAsConst(*m_pListPlugins)) {
            if (info->Clsid() == clsid && info->IsEnabled() == enabled)
                return true;
        }
        return false;
    };

    for (const QString &clsid : deviceEnables) {
        if (anyRecord(clsid, false)) {
            qCDebug(lcPlugins, "%s: need to enable pPluginInfo->Clsid ()", prefix.constData());
            return true;
        }
    }
    for (const QString &clsid : deviceDisables) {
        if (anyRecord(clsid, true)) {
            qCDebug(lcPlugins, "%s: need to disable pPluginInfo->Clsid ()", prefix.constData());
            return true;
        }
    }
    for (const QString &clsid : commonEnables) {
        if (anyRecord(clsid, false) && !deviceDisables.contains(clsid)) {
            // Says "disable" although the plugin would be switched on; the wording is kept.
            qCDebug(lcPlugins, "%s: need to disable pPluginInfo->Clsid ()", prefix.constData());
            return true;
        }
    }
    for (const PluginInfo *info : qAsConst(*m_pListPlugins)) {
        if (info->IsEnabled() && !deviceEnables.contains(info->Clsid()) &&
            !commonEnables.contains(info->Clsid())) {
            qCDebug(lcPlugins, "%s: need to disable pPluginInfo->Clsid ()", prefix.constData());
            return true;
        }
    }
    return false;
}

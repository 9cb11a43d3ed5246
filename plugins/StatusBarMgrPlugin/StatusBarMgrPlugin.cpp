#include "StatusBarMgrPlugin.h"

#include "Change.h"
#include "CommonUtils.h"
#include "NexoBackend.h"
#include "PluginSupport.h"
#include "StatusBarOpListParse.h"

namespace {

constexpr char kName[] = "StatusBarMgrPlugin";

QString text(const char *id)
{
    return Change::tr(QLatin1String(id), QLatin1String(kName));
}

QString settingOr(const char *group, const char *key, const QString &fallback)
{
    const QString value = CommonUtils::GetSettings(QLatin1String(group), QLatin1String(key));
    return value.isEmpty() ? fallback : value;
}

// The operator of the device's SIM (MCC and MNC) by its name in the operator list; else the
// operator customization of the settings.
QString operatorName(const QString &none)
{
    char operatorId[NEXO_OPERATOR_ID_SIZE] = {};
    if (NEXO_DevSrv_GetSimOperatorId(operatorId) == 0 && qstrlen(operatorId) >= 5) {
        const QString code = QString::fromLatin1(operatorId);
        const QString name = StatusBarOpListParse::GetInstance()
                                 ->GetOperatorData(code.left(3), code.mid(3))
                                 .strShortDescr;
        if (!name.isEmpty())
            return name;
    }
    return settingOr("customize", "operator", none);
}

} // namespace

StatusBarMgrPlugin::~StatusBarMgrPlugin()
{
    delete m_pLabel;
}

bool StatusBarMgrPlugin::Initialize()
{
    PluginSupport::logCall(kName, "Initialize");
    QStatusBar *pStatusBar = PluginSupport::mainStatusBar();
    if (!pStatusBar || m_pLabel)
        return true;
    const QString none = text("IDS_STATUS_NONE");
    const QString device = settingOr("devicemgr", "lastused", none);
    const QString op = operatorName(none);
    m_pLabel =
        new QLabel(text("IDS_STATUS_DEVICE") + QLatin1Char(' ') + device + QStringLiteral("  |  ") +
                   text("IDS_STATUS_OPERATOR") + QLatin1Char(' ') + op);
    qDebug("%s: shows \"%s\"", kName, qPrintable(m_pLabel->text()));
    m_pLabel->setObjectName(QStringLiteral("StatusBarMgrPlugin_DeviceLabel"));
    pStatusBar->addPermanentWidget(m_pLabel);
    return true;
}

void StatusBarMgrPlugin::Release()
{
    PluginSupport::logCall(kName, "Release");
    delete m_pLabel;
}

bool StatusBarMgrPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (!ppInterface)
        return false;
    *ppInterface = iInterfaceNumber == LD_INTERFACE_ROOT ? this : nullptr;
    return *ppInterface != nullptr;
}

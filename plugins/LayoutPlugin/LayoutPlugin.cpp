#include "LayoutPlugin.h"

#include "Change.h"
#include "PluginSupport.h"

#include <QTabWidget>

namespace {
constexpr char kName[] = "LayoutPlugin";
} // namespace

LayoutPlugin::~LayoutPlugin()
{
    delete m_pPages;
}

bool LayoutPlugin::Initialize()
{
    PluginSupport::logCall(kName, "Initialize");
    return true;
}

void LayoutPlugin::Release()
{
    PluginSupport::logCall(kName, "Release");
    delete m_pPages;
}

bool LayoutPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (!ppInterface)
        return false;
    const bool known =
        iInterfaceNumber == LD_INTERFACE_ROOT || iInterfaceNumber == LD_INTERFACE_DEVICE_MGR;
    *ppInterface = known ? this : nullptr;
    return known;
}

QWidget *LayoutPlugin::GetLayoutWidget()
{
    if (!m_pPages && PluginSupport::onUiThread()) {
        m_pPages = new QTabWidget;
        m_pPages->setObjectName(QStringLiteral("LayoutPlugin_Pages"));
        m_pPages->setDocumentMode(true);
        m_pPages->setAccessibleName(
            Change::tr(QStringLiteral("IDS_LAYOUT_PAGES"), QLatin1String(kName)));
    }
    return m_pPages;
}

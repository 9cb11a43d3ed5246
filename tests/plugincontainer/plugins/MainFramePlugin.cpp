#include "MainFramePlugin.h"

#include "TestProbe.h"

namespace {
QString probeEvent(const char *what)
{
    return QString::fromLatin1(what) + QStringLiteral(":" PLUGIN_TAG);
}
} // namespace

MainFramePlugin::MainFramePlugin()
{
    TestProbe::record(probeEvent("Load"));
}

MainFramePlugin::~MainFramePlugin()
{
    TestProbe::record(probeEvent("Unload"));
}

void MainFramePlugin::Release()
{
    TestProbe::record(probeEvent("Release"));
}

bool MainFramePlugin::Initialize()
{
    TestProbe::record(probeEvent("Initialize"));
    return PLUGIN_INIT_RESULT;
}

bool MainFramePlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    TestProbe::record(probeEvent("QueryInterface") + QLatin1Char(':') +
                      QString::number(iInterfaceNumber));
    if (iInterfaceNumber != LD_INTERFACE_MAIN_FRAME_SERVICE) {
        *ppInterface = nullptr;
        return false;
    }
    *ppInterface = this;
    return true;
}

void MainFramePlugin::Create(QWidget *, const QRect &)
{
    TestProbe::record(probeEvent("Create"));
}

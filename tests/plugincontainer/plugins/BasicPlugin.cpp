#include "BasicPlugin.h"

#include "TestProbe.h"

namespace {
QString probeEvent(const char *what)
{
    return QString::fromLatin1(what) + QStringLiteral(":" PLUGIN_TAG);
}
} // namespace

BasicPlugin::BasicPlugin()
{
    TestProbe::record(probeEvent("Load"));
}

BasicPlugin::~BasicPlugin()
{
    TestProbe::record(probeEvent("Unload"));
}

void BasicPlugin::Release()
{
    TestProbe::record(probeEvent("Release"));
}

bool BasicPlugin::Initialize()
{
    TestProbe::record(probeEvent("Initialize"));
    TestProbe::noteThread(probeEvent("Initialize"));
    return PLUGIN_INIT_RESULT;
}

bool BasicPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    TestProbe::record(probeEvent("QueryInterface") + QLatin1Char(':') +
                      QString::number(iInterfaceNumber));
    *ppInterface = nullptr;
    return false;
}

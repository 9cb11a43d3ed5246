#include "NoBasePlugin.h"

#include "TestProbe.h"

NoBasePlugin::NoBasePlugin()
{
    TestProbe::record(QStringLiteral("Load:" PLUGIN_TAG));
}

NoBasePlugin::~NoBasePlugin()
{
    TestProbe::record(QStringLiteral("Unload:" PLUGIN_TAG));
}

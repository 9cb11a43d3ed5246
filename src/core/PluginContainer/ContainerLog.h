#ifndef LINKDECK_CONTAINERLOG_H
#define LINKDECK_CONTAINERLOG_H

#include "common/CoreLogging.h"
#include "common/LogLine.h"
#include "common/PluginClsid.h"

// Source path of every line the container writes.
static const char kContainerSource[] = LD_SOURCE("PluginContainer/PluginContainer");

enum { kDeviceManagerInterface = 4097 };

#endif // LINKDECK_CONTAINERLOG_H

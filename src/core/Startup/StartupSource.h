#ifndef LINKDECK_STARTUPSOURCE_H
#define LINKDECK_STARTUPSOURCE_H

#include "common/LogLine.h"

// Source path of every Startup log line.
static constexpr char kStartupSource[] = LD_SOURCE("Startup/Startup");

#endif // LINKDECK_STARTUPSOURCE_H

#ifndef LINKDECK_TITLEBARSOURCE_H
#define LINKDECK_TITLEBARSOURCE_H

#include "common/CoreLogging.h"
#include "common/LogLine.h"

// Source path of every TitleBar log line ("<source>, <function> : ...").
static constexpr char kTitleBarSource[] = LD_SOURCE("TitleBar/TitleBar");

#endif // LINKDECK_TITLEBARSOURCE_H

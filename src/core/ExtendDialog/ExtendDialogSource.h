#ifndef LINKDECK_EXTENDDIALOGSOURCE_H
#define LINKDECK_EXTENDDIALOGSOURCE_H

#include "common/CoreLogging.h"
#include "common/LogLine.h"

// Source path of every ExtendDialog log line ("<source>, <function> : ...").
static constexpr char kExtendDialogSource[] = LD_SOURCE("ExtendDialog/ExtendDialog");

#endif // LINKDECK_EXTENDDIALOGSOURCE_H

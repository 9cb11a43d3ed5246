#ifndef LINKDECK_TOOLBARSHARED_H
#define LINKDECK_TOOLBARSHARED_H

#include "CommonUtils.h"
#include "common/LogLine.h"

#include <QString>

namespace ToolBarShared {

// Lines of the toolbar subsystem, the search box's included, name this source file.
constexpr const char kSource[] = LD_SOURCE("ToolBar/ToolBarLogic.cpp");

// <application dir>/plugins/<plugin>/<file>: where a plugin keeps its toolbar icons.
inline QString pluginFilePath(const QString &strPluginName, const QString &strFileName)
{
    return CommonUtils::GetPluginLibraryPath() + QLatin1String("/plugins/") + strPluginName +
           QLatin1Char('/') + strFileName;
}

} // namespace ToolBarShared

#endif // LINKDECK_TOOLBARSHARED_H

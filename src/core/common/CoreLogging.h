#ifndef LINKDECK_CORELOGGING_H
#define LINKDECK_CORELOGGING_H

#include <QLoggingCategory>

// One category per subsystem, so that integrators can filter ("linkdeck.core.plugins.debug=false").
Q_DECLARE_LOGGING_CATEGORY(lcCommon)
Q_DECLARE_LOGGING_CATEGORY(lcPlugins)
Q_DECLARE_LOGGING_CATEGORY(lcStartup)
Q_DECLARE_LOGGING_CATEGORY(lcOperators)
Q_DECLARE_LOGGING_CATEGORY(lcLanguage)
Q_DECLARE_LOGGING_CATEGORY(lcMenus)
Q_DECLARE_LOGGING_CATEGORY(lcToolBar)
Q_DECLARE_LOGGING_CATEGORY(lcWidgets)
Q_DECLARE_LOGGING_CATEGORY(lcSound)
// Title bars and dialog frames.
Q_DECLARE_LOGGING_CATEGORY(lcChrome)
// XML errors of any configuration file, at warning level.
Q_DECLARE_LOGGING_CATEGORY(lcXml)

#endif // LINKDECK_CORELOGGING_H

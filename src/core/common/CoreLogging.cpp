#include "CoreLogging.h"

Q_LOGGING_CATEGORY(lcCommon, "linkdeck.core.common")
Q_LOGGING_CATEGORY(lcPlugins, "linkdeck.core.plugins")
Q_LOGGING_CATEGORY(lcStartup, "linkdeck.core.startup")
Q_LOGGING_CATEGORY(lcOperators, "linkdeck.core.operators")
Q_LOGGING_CATEGORY(lcLanguage, "linkdeck.core.language")
Q_LOGGING_CATEGORY(lcMenus, "linkdeck.core.menus")
Q_LOGGING_CATEGORY(lcToolBar, "linkdeck.core.toolbar")
Q_LOGGING_CATEGORY(lcWidgets, "linkdeck.core.widgets")
Q_LOGGING_CATEGORY(lcSound, "linkdeck.core.sound")
Q_LOGGING_CATEGORY(lcChrome, "linkdeck.core.chrome")
Q_LOGGING_CATEGORY(lcXml, "linkdeck.core.xml")

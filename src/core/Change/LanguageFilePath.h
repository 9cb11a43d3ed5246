#ifndef LINKDECK_LANGUAGEFILEPATH_H
#define LINKDECK_LANGUAGEFILEPATH_H

#include <QString>

// A plugin's language file below an application directory: plugins/<plugin>/<plugin>_<lang>.lang.
inline QString languageFilePath(const QString &appDir, const QString &plugin, const QString &lang)
{
    return appDir + QLatin1String("/plugins/") + plugin + QLatin1Char('/') + plugin +
           QLatin1Char('_') + lang + QLatin1String(".lang");
}

#endif // LINKDECK_LANGUAGEFILEPATH_H

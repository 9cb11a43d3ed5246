#include "SettingsLocation.h"

#include <QDir>

QString settingsFileInUse()
{
    const QString explicitFile = qEnvironmentVariable("LINKDECK_SETTINGS");
    if (!explicitFile.isEmpty())
        return explicitFile;
    QString configHome = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (!configHome.startsWith(QLatin1Char('/')))
        configHome = QDir::homePath() + QStringLiteral("/.config");
    return configHome + QStringLiteral("/linkdeck/settings.ini");
}

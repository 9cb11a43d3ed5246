#include "CommonUtils.h"

#include "CoreLogging.h"
#include "LogLine.h"
#include "NexoString.h"

#include <QCoreApplication>

bool gSeparator = true;

namespace {
const char kSource[] = LD_SOURCE("common/CommonUtils");
bool s_shuttingDown = false;
} // namespace

QString CommonUtils::GetSettings(QString group, QString key)
{
    NEXO_CHAR16 *value = nullptr;
    const long status = NEXO_GetSettings(NexoString::of(group), NexoString::of(key), &value);
    qCDebug(lcCommon, "%s: NEXO_GetSettings (%s, %s) returned %li",
            LogLine::stampedPrefix(kSource, "GetSettings").constData(),
            LogLine::arg(group).constData(), LogLine::arg(key).constData(), status);
    if (status == 0 && value)
        return NexoString::take(value);

    delete[] value;
    qCWarning(lcCommon, "%s: NEXO_GetSettings returned %li",
              LogLine::stampedPrefix(kSource, "GetSettings").constData(), status);
    return QString();
}

bool CommonUtils::SetSettings(QString group, QString key, QString value)
{
    // Callers depend on this sense: true when the library reports a non-zero status.
    return NEXO_SetSettings(NexoString::of(group), NexoString::of(key), NexoString::of(value)) != 0;
}

bool CommonUtils::GetSMSSeperatorConfigValue()
{
    return gSeparator;
}

void CommonUtils::SetSMSSeperatorConfigValue(bool value)
{
    gSeparator = value;
}

bool CommonUtils::IsShuttingDown()
{
    return s_shuttingDown;
}

void CommonUtils::SetShutDownFlag()
{
    s_shuttingDown = true;
}

void CommonUtils::ResetShutDownFlag()
{
    s_shuttingDown = false;
}

QString CommonUtils::GetPluginLibraryPath()
{
    return QCoreApplication::applicationDirPath();
}

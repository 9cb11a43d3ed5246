#ifndef LINKDECK_COMMONUTILS_H
#define LINKDECK_COMMONUTILS_H

#include "CoreGlobal.h"

#include <QString>

class QThread;

// Message-separator switch read by the menu builder; true until changed.
CORE_EXPORT extern bool gSeparator;

// Static helpers shared by the core and every plugin.
class CORE_EXPORT CommonUtils
{
public:
    // Settings store of the device-service library. SetSettings returns true when the library
    // reports a non-zero status (callers rely on that sense).
    static QString GetSettings(QString group, QString key);
    static bool SetSettings(QString group, QString key, QString value);

    static bool GetSMSSeperatorConfigValue();
    static void SetSMSSeperatorConfigValue(bool value);

    static bool IsShuttingDown();
    static void SetShutDownFlag();
    static void ResetShutDownFlag();

    // The application directory, root of every path of the core.
    static QString GetPluginLibraryPath();

    // Worker threads register on start and deregister on exit so that shut-down can wait.
    static void ThreadCountInc(QString strClass, QString strFunction);
    static int ThreadCountDec(QString strClass, QString strFunction);
    static void WaitThreadsStop();
    static void WaitForThreadToStop(QThread *pThread, unsigned int unMaxWait);
};

#endif // LINKDECK_COMMONUTILS_H

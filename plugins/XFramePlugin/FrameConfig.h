#ifndef LINKDECK_XFRAMEPLUGIN_FRAMECONFIG_H
#define LINKDECK_XFRAMEPLUGIN_FRAMECONFIG_H

#include <QString>

// The main frame's settings from its Config.xml ("function" part; the splash choice in the same
// file is the core's start-up business).
struct FrameConfig
{
    bool customTitleBar = false;
    int titleHeight = 28;
    int frameWidth = 4;
    QString layoutClsid;

    // Values missing from the file (or a missing file) keep the defaults above.
    static FrameConfig load(const QString &fileName);
};

#endif // LINKDECK_XFRAMEPLUGIN_FRAMECONFIG_H

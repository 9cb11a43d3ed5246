// The main frame's Config.xml: the splash choice of the start-up (for the operator "nordtel") and
// the frame settings of the main-frame plugin.
#include "FrameConfig.h"
#include "FuzzSupport.h"
#include "Startup.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // Without configuration files the start-up builds an empty container and loads no plugin.
    static Startup *startup = new Startup(true);
    const QString path = Fuzz::writeAppFile(QStringLiteral("plugins/XFramePlugin/Config.xml"),
                                            Fuzz::bytes(data, size));
    startup->haveSplashScreen();
    FrameConfig::load(path);
    return 0;
}

#include "XFramePlugin.h"

#include "CommonUtils.h"
#include "MainWindow.h"
#include "MainWindowTitle.h"
#include "PluginSupport.h"
#include "Startup.h"

#include <QSplashScreen>

namespace {

constexpr char kName[] = "XFramePlugin";
constexpr QSize kDefaultSize(640, 420);

} // namespace

XFramePlugin::XFramePlugin() = default;

XFramePlugin::~XFramePlugin()
{
    delete m_pWindow;
}

bool XFramePlugin::Initialize()
{
    PluginSupport::logCall(kName, "Initialize");
    m_config = FrameConfig::load(CommonUtils::GetPluginLibraryPath() +
                                 QStringLiteral("/plugins/XFramePlugin/Config.xml"));
    return true;
}

void XFramePlugin::Release()
{
    PluginSupport::logCall(kName, "Release");
    // The window's code lives in this library, which the container unloads next.
    delete m_pWindow;
}

bool XFramePlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (!ppInterface)
        return false;
    switch (iInterfaceNumber) {
    case LD_INTERFACE_ROOT:
    case LD_INTERFACE_MAIN_FRAME_SERVICE:
        *ppInterface = this;
        return true;
    default:
        *ppInterface = nullptr;
        return false;
    }
}

void XFramePlugin::Create(QWidget *pParent, const QRect &rect)
{
    PluginSupport::logCall(kName, "Create");
    if (!m_pWindow) {
        // Frameless from the start: changing the flags later polishes every child again.
        m_pWindow = new MainWindow(pParent, m_config.customTitleBar ? Qt::FramelessWindowHint
                                                                    : Qt::WindowFlags());
        if (m_config.customTitleBar)
            new MainWindowTitle(m_pWindow, m_config.titleHeight, m_config.frameWidth);
    }
    if (rect.isValid())
        m_pWindow->setGeometry(rect);
    else
        m_pWindow->resize(kDefaultSize);
    m_pWindow->show();
    closeSplashScreen();
}

void XFramePlugin::closeSplashScreen()
{
    int elapsed = 0;
    QSplashScreen *pSplash = Startup::GetSplashScreen(elapsed);
    if (!pSplash)
        return;
    qDebug("%s: splash screen shown for %d ms", kName, elapsed);
    pSplash->finish(m_pWindow);
    delete pSplash;
}

QWidget *XFramePlugin::GetMainWindow()
{
    return m_pWindow;
}

QString XFramePlugin::GetLayoutPluginClsid()
{
    return m_config.layoutClsid;
}

bool XFramePlugin::IsCustomTitleBar()
{
    return m_config.customTitleBar;
}

int XFramePlugin::GetTitleHeight()
{
    return m_config.titleHeight;
}

int XFramePlugin::GetFrameWidth()
{
    return m_config.frameWidth;
}

#include "AppController.h"

#include "Change.h"
#include "CommonUtils.h"
#include "IPluginContainer.h"
#include "NexoBackend.h"
#include "NexoSim.h"
#include "PluginInterfaces.h"
#include "SettingsLocation.h"
#include "Startup.h"
#include "StartupProfile.h"

#include <QApplication>
#include <QDir>
#include <QPixmap>
#include <QWidget>
#include <QWindow>

#include <cstdio>
#include <utility>
#include <vector>

namespace {

constexpr int kConfigPollMs = 50;

void setSimulatedDevices(const QStringList &devices)
{
    std::vector<QByteArray> names;
    for (const QString &device : devices)
        names.push_back(device.toLocal8Bit());
    std::vector<const char *> pointers;
    for (const QByteArray &name : names)
        pointers.push_back(name.constData());
    NexoSim_SetDevices(pointers.data(), int(pointers.size()));
}

} // namespace

AppController::AppController(QApplication &app, AppOptions options)
    : m_app(app)
    , m_options(std::move(options))
{
    m_configPoll.setInterval(kConfigPollMs);
    connect(&m_configPoll, &QTimer::timeout, this, &AppController::pollPluginsConfig);
    connect(&m_app, &QCoreApplication::aboutToQuit, this, &AppController::writeScreenshot);
}

AppController::~AppController()
{
    shutDown();
}

void AppController::start()
{
    if (m_options.profile)
        m_app.installEventFilter(this);
    {
        StartupProfile::Scope phase(QStringLiteral("skin and settings"));
        applySkin();
        selectBackend();
        configureSimulator();
        applyLanguageAndOperator();
    }

    m_pStartup = std::make_unique<Startup>(m_options.noSplash);
    printRunInfo();

    m_configPoll.start();
    if (!m_options.switchDevice.isEmpty())
        QTimer::singleShot(m_options.switchAfterMs, this, &AppController::switchDevice);
    if (m_options.rejectAfterMs >= 0)
        NexoSim_PostEvent(NEXO_EVENT_DEV_REJECT, m_options.rejectAfterMs);
    if (m_options.quitAfterMs >= 0)
        QTimer::singleShot(m_options.quitAfterMs, &m_app, &QCoreApplication::quit);
}

void AppController::applySkin()
{
    const QString appDir = CommonUtils::GetPluginLibraryPath();
    // The style finds its scroll-bar images relative to the current directory.
    QDir::setCurrent(appDir);
    if (!Change::ChangSkin(&m_app, appDir + QStringLiteral("/skin/IDS_SKIN_DEFAULT.qss")))
        std::fprintf(stderr, "linkdeck: the default skin could not be applied\n");
}

void AppController::selectBackend()
{
    // Chosen before anything asks the device service; without the option the library chooses
    // from the environment and the settings.
    if (m_options.backend.isEmpty())
        return;
    if (NEXO_Backend_Select(m_options.backend.toLatin1().constData()) != 0)
        std::fprintf(stderr, "linkdeck: the device backend %s is not available\n",
                     qPrintable(m_options.backend));
}

void AppController::configureSimulator()
{
    // The settings may describe the simulated hardware; the command line wins over them.
    NexoSim_LoadFromSettings();
    if (!m_options.devices.isEmpty())
        setSimulatedDevices(m_options.devices);
    if (!m_options.operatorName.isEmpty())
        NexoSim_SetCustomizeName(m_options.operatorName.toLocal8Bit().constData());
    if (!m_options.cellBroadcast.isEmpty())
        NexoSim_SetCellBroadcast(m_options.cellBroadcast.toUtf8().constData());
}

void AppController::applyLanguageAndOperator()
{
    // Both are read by the container's constructor, so they must be stored before it runs.
    if (!m_options.language.isEmpty())
        Change::SetLangName(m_options.language);
    if (!m_options.operatorName.isEmpty())
        CommonUtils::SetSettings(QStringLiteral("customize"), QStringLiteral("operator"),
                                 m_options.operatorName);
}

void AppController::printRunInfo() const
{
    std::printf("Settings file: %s\n", qPrintable(QDir::toNativeSeparators(settingsFileInUse())));
    std::printf("Device backend: %s\n", NEXO_Backend_Name());
    std::printf("Language: %s\n", qPrintable(Change::GetLangName()));
    std::printf("Title: %s\n",
                Change::tr(QStringLiteral("IDS_APP_TITLE"), QStringLiteral("XFramePlugin"))
                    .toLocal8Bit()
                    .constData());
    std::fflush(stdout);
}

void AppController::pollPluginsConfig()
{
    IPluginContainer *pContainer = Startup::GetPluginContainer();
    if (!pContainer || !pContainer->IsPluginsConfigInitialized())
        return;
    m_configPoll.stop();
    // The device customization is in place: load every enabled start-up plugin, then bring the
    // loaded set in line with it. The update is also what loads the plugins that start-up
    // loading postpones, so it has to come second.
    StartupProfile::Scope phase(QStringLiteral("start-up loading"));
    pContainer->LoadAllStaticOrActivePlugin();
    pContainer->UpdateAllStaticOrActivePlugins();
}

void AppController::switchDevice()
{
    std::printf("Switching to device %s\n", qPrintable(m_options.switchDevice));
    std::fflush(stdout);
    setSimulatedDevices({m_options.switchDevice});
    // The service announces the change as it does a new device; the device manager acts on it.
    NexoSim_PostEvent(NEXO_EVENT_DEV_DETECTED, 0);
}

void AppController::writeScreenshot()
{
    if (m_options.screenshotFile.isEmpty())
        return;
    IMainFrameUIService *pService = Startup::GetMainFrameService();
    QWidget *pWindow = pService ? pService->GetMainWindow() : nullptr;
    if (!pWindow) {
        std::fprintf(stderr, "linkdeck: no main window to take a screenshot of\n");
        m_bSucceeded = false;
        return;
    }
    if (!pWindow->grab().save(m_options.screenshotFile, "PNG")) {
        std::fprintf(stderr, "linkdeck: could not write %s\n",
                     qPrintable(m_options.screenshotFile));
        m_bSucceeded = false;
        return;
    }
    std::printf("Screenshot: %s\n", qPrintable(m_options.screenshotFile));
    std::fflush(stdout);
}

bool AppController::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Expose) {
        const auto *window = qobject_cast<QWindow *>(watched);
        IMainFrameUIService *pService = Startup::GetMainFrameService();
        const QWidget *pMain = pService ? pService->GetMainWindow() : nullptr;
        if (window && pMain && window == pMain->windowHandle() && window->isExposed()) {
            StartupProfile::recordPhase(QStringLiteral("first window shown"), 0,
                                        StartupProfile::now());
            m_app.removeEventFilter(this);
        }
    }
    return QObject::eventFilter(watched, event);
}

void AppController::shutDown()
{
    if (!m_pStartup)
        return;
    if (m_options.profile) {
        std::fputs(qPrintable(StartupProfile::table()), stdout);
        std::fflush(stdout);
    }
    m_configPoll.stop();
    CommonUtils::SetShutDownFlag();
    CommonUtils::WaitThreadsStop();
    m_pStartup.reset();
}

#include "NotifyPlugin.h"

#include "Change.h"
#include "NotifyWorker.h"
#include "PluginSupport.h"

namespace {

constexpr char kName[] = "NotifyPlugin";
constexpr int kPeriodMs = 500;

QString text(const char *id)
{
    return Change::tr(QLatin1String(id), QLatin1String(kName));
}

} // namespace

NotifyPlugin::NotifyPlugin() = default;

NotifyPlugin::~NotifyPlugin()
{
    // Neither the thread nor the label may outlive this library.
    stopAndJoinWorker();
    delete m_pLabel;
}

bool NotifyPlugin::Initialize()
{
    PluginSupport::logCall(kName, "Initialize");
    if (m_pWorker)
        return true;
    if (QStatusBar *pStatusBar = PluginSupport::mainStatusBar()) {
        m_pLabel = new QLabel;
        m_pLabel->setObjectName(QStringLiteral("NotifyPlugin_RoundLabel"));
        pStatusBar->addPermanentWidget(m_pLabel);
        showRound(0);
    }
    m_pWorker = std::make_unique<NotifyWorker>(kPeriodMs);
    connect(m_pWorker.get(), &NotifyWorker::notified, this, &NotifyPlugin::showRound);
    m_pWorker->start();
    return true;
}

void NotifyPlugin::showRound(int round)
{
    if (m_pLabel)
        m_pLabel->setText(text("IDS_NOTIFY_ROUNDS") + QLatin1Char(' ') + QString::number(round));
}

void NotifyPlugin::StopThreads()
{
    PluginSupport::logCall(kName, "StopThreads");
    if (m_pWorker)
        m_pWorker->requestStop();
}

void NotifyPlugin::Release()
{
    PluginSupport::logCall(kName, "Release");
    stopAndJoinWorker();
    delete m_pLabel;
}

void NotifyPlugin::stopAndJoinWorker()
{
    if (!m_pWorker)
        return;
    m_pWorker->requestStop();
    m_pWorker->wait();
    m_pWorker.reset();
}

bool NotifyPlugin::QueryInterface(int iInterfaceNumber, QObject **ppInterface)
{
    if (!ppInterface)
        return false;
    if (iInterfaceNumber == LD_INTERFACE_ROOT || iInterfaceNumber == LD_INTERFACE_NOTIFY_SERVICE) {
        *ppInterface = this;
        return true;
    }
    *ppInterface = nullptr;
    return false;
}

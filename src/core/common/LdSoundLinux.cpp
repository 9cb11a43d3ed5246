#include "LdSound.h"

#include "CoreLogging.h"
#include "LogLine.h"

#include <QProcess>

namespace {

const char kSource[] = LD_SOURCE("common/LdSoundLinux");
constexpr int kStartWaitMs = 30000;
// How long the destructor lets a terminated player take to go.
constexpr int kStopWaitMs = 2000;

QByteArray prefix(const char *function)
{
    return LogLine::prefix(kSource, function);
}

} // namespace

LdSound::LdSound(QString soundFile)
    : m_strSoundFile(std::move(soundFile))
    , m_pProcess(new QProcess(this))
{
    connect(m_pProcess, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this,
            &LdSound::finished);
}

LdSound::~LdSound()
{
    if (!Stop())
        return;
    // Nobody is to hear of a playback that ends while its owner goes.
    m_pProcess->disconnect(this);
    m_pProcess->waitForFinished(kStopWaitMs);
}

void LdSound::SetSoundFile(const QString &soundFile)
{
    m_strSoundFile = soundFile;
}

bool LdSound::Play()
{
    if (!m_pProcess)
        return false;
    m_pProcess->start(QStringLiteral("aplay"), {m_strSoundFile}, QIODevice::ReadWrite);
    const bool started = m_pProcess->waitForStarted(kStartWaitMs);
    qCDebug(lcSound, "%s: started = %d", prefix("Play").constData(), int(started));
    return started;
}

bool LdSound::IsPlaying()
{
    if (m_pProcess && m_pProcess->state() != QProcess::NotRunning) {
        qCDebug(lcSound, "%s: true", prefix("IsPlaying").constData());
        return true;
    }
    qCDebug(lcSound, "%s: not playing", prefix("IsPlaying").constData());
    return false;
}

bool LdSound::Stop()
{
    if (m_pProcess && m_pProcess->state() != QProcess::NotRunning) {
        qCDebug(lcSound, "%s: Killing process", prefix("Stop").constData());
        m_pProcess->terminate();
        qCDebug(lcSound, "%s: returning %d", prefix("Stop").constData(), 1);
        return true;
    }
    qCDebug(lcSound, "%s: returning %d", prefix("Stop").constData(), 0);
    return false;
}

#ifndef LINKDECK_LDSOUND_H
#define LINKDECK_LDSOUND_H

#include "CoreGlobal.h"

#include <QObject>
#include <QString>

class QProcess;

// Plays a sound file with the system's command-line player "aplay", run as a child process.
class CORE_EXPORT LdSound : public QObject
{
    Q_OBJECT
public:
    explicit LdSound(QString soundFile);
    // Stops a playback that is still running.
    ~LdSound() override;

    // The file for the next Play.
    void SetSoundFile(const QString &soundFile);
    // Starts the player without stopping one that runs; blocks until it has started (at most
    // 30 s). False when it could not be started.
    bool Play();
    // True while the player is starting or running.
    bool IsPlaying();
    // Asks a running player to terminate; false when none runs.
    bool Stop();

signals:
    // A playback ended, by itself or by Stop.
    void finished();

private:
    QString m_strSoundFile;
    QProcess *m_pProcess;
};

#endif // LINKDECK_LDSOUND_H

#ifndef LINKDECK_NOTIFYPLUGIN_NOTIFYWORKER_H
#define LINKDECK_NOTIFYPLUGIN_NOTIFYWORKER_H

#include <QThread>

#include <atomic>

// Polls for news in the background and reports each round. Registered with the core's thread
// bookkeeping so that shut-down waits for it; ends on requestStop() or the shut-down flag.
class NotifyWorker : public QThread
{
    Q_OBJECT
public:
    explicit NotifyWorker(int periodMs, QObject *pParent = nullptr);

    void requestStop() { m_bStop = true; }

signals:
    void notified(int round);

protected:
    void run() override;

private:
    bool shouldStop() const;

    const int m_periodMs;
    std::atomic<bool> m_bStop{false};
};

#endif // LINKDECK_NOTIFYPLUGIN_NOTIFYWORKER_H

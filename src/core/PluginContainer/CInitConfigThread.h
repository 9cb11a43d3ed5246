#ifndef LINKDECK_CINITCONFIGTHREAD_H
#define LINKDECK_CINITCONFIGTHREAD_H

#include <QThread>

class PluginContainer;

// Runs the container's device customization once, away from the user-interface thread, since
// finding the device may wait for the device service. It holds the concrete container, not the
// interface: it is started while the container may still be under construction, so it must not
// dispatch virtually into it.
class CInitConfigThread : public QThread
{
    Q_OBJECT

public:
    using QThread::QThread;
    bool Init(PluginContainer *pContainer);

protected:
    void run() override;

private:
    PluginContainer *m_pContainer = nullptr;
};

#endif // LINKDECK_CINITCONFIGTHREAD_H

#ifndef LINKDECK_CINITCONFIGTHREAD_H
#define LINKDECK_CINITCONFIGTHREAD_H

#include <QThread>

class IPluginContainer;

// Runs the container's device customization once, away from the user-interface thread, since
// finding the device may wait for the device service.
class CInitConfigThread : public QThread
{
    Q_OBJECT

public:
    using QThread::QThread;
    bool Init(IPluginContainer *pContainer);

protected:
    void run() override;

private:
    IPluginContainer *m_pContainer = nullptr;
};

#endif // LINKDECK_CINITCONFIGTHREAD_H

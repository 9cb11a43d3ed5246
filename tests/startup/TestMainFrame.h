#ifndef LINKDECK_TESTS_TESTMAINFRAME_H
#define LINKDECK_TESTS_TESTMAINFRAME_H

#include "PluginInterfaces.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

// A complete main frame for the start-up tests: root object and service 4113. It leaves the
// splash screen to the test and logs "TestMainFrame: <call>" for each life-cycle call.
class TestMainFrame : public QObject,
                      public IBasePlugin,
                      public IUIPlugin,
                      public IMainFrameUIService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IUIPlugin IMainFrameUIService)
public:
    ~TestMainFrame() override;

    void Release() override;
    int GetLastError() override { return 0; }
    bool Initialize() override;
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override;
    // Logs "TestMainFrame: Create parent=<null|set> rect=<null|set>".
    void Create(QWidget *pParent, const QRect &rect) override;

    QWidget *GetMainWindow() override { return m_pWindow; }
    QString GetLayoutPluginClsid() override { return QString(); }
    bool IsCustomTitleBar() override { return false; }
    int GetTitleHeight() override { return 0; }
    int GetFrameWidth() override { return 0; }

private:
    QPointer<QWidget> m_pWindow;
};

#endif // LINKDECK_TESTS_TESTMAINFRAME_H

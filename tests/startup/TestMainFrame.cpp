#include "PluginInterfaces.h"

#include <QPointer>
#include <QWidget>

#ifdef TEST_FRAME_WITHOUT_SERVICE
constexpr bool kWithService = false;
#else
constexpr bool kWithService = true;
#endif

// A main frame for the start-up tests that logs "TestMainFrame: <call>" and leaves the splash
// screen to the test. Built with TEST_FRAME_WITHOUT_SERVICE it lacks the service 4113.
class TestMainFrame : public QObject,
                      public IBasePlugin,
                      public IUIPlugin,
                      public IMainFrameUIService
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin IUIPlugin IMainFrameUIService)

public:
    void Release() override
    {
        qDebug("TestMainFrame: Release");
        delete m_pWindow;
    }
    int GetLastError() override { return 0; }
    bool Initialize() override
    {
        qDebug("TestMainFrame: Initialize");
        return true;
    }
    bool QueryInterface(int number, QObject **ppInterface) override
    {
        *ppInterface = number == LD_INTERFACE_ROOT ||
                               (kWithService && number == LD_INTERFACE_MAIN_FRAME_SERVICE)
                           ? this
                           : nullptr;
        return *ppInterface;
    }
    void Create(QWidget *pParent, const QRect &rect) override
    {
        qDebug("TestMainFrame: Create parent=%s rect=%s", pParent ? "set" : "null",
               rect.isNull() ? "null" : "set");
        m_pWindow = new QWidget(pParent);
        m_pWindow->show();
    }
    QWidget *GetMainWindow() override { return m_pWindow; }
    QString GetLayoutPluginClsid() override { return QString(); }
    bool IsCustomTitleBar() override { return false; }
    int GetTitleHeight() override { return 0; }
    int GetFrameWidth() override { return 0; }

private:
    QPointer<QWidget> m_pWindow;
};

#include "TestMainFrame.moc"

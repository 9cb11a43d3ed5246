#ifndef LINKDECK_PLUGINS_PAGEPLUGIN_H
#define LINKDECK_PLUGINS_PAGEPLUGIN_H

#include "Change.h"
#include "PluginSupport.h"

#include <QPointer>

// A plugin whose work is one page among the main window's pages, placed through the layout
// plugin when the plugin is initialised on the user-interface thread. The page goes with the
// plugin, since the plugin's library holds the code of the page's connections.
class PagePlugin : public QObject, public IBasePlugin
{
public:
    using PageFactory = QWidget *(*)();

    ~PagePlugin() override { delete m_pPage; }

    void Release() override
    {
        PluginSupport::logCall(m_pName, "Release");
        delete m_pPage;
    }
    int GetLastError() override { return 0; }
    bool Initialize() override
    {
        PluginSupport::logCall(m_pName, "Initialize");
        if (m_pPage || !PluginSupport::onUiThread())
            return true;
        m_pPage = m_createPage();
        const QString title = Change::tr(QLatin1String(m_pTitleId), QLatin1String(m_pName));
        if (!PluginSupport::addPage(m_pPage, title)) {
            qWarning("%s: no layout plugin to show the page", m_pName);
            delete m_pPage;
        }
        return true;
    }
    bool QueryInterface(int iInterfaceNumber, QObject **ppInterface) override
    {
        if (!ppInterface)
            return false;
        *ppInterface = iInterfaceNumber == LD_INTERFACE_ROOT ? this : nullptr;
        return *ppInterface;
    }

protected:
    // pName: the plugin's name (its language context); pTitleId: the page title's identifier.
    PagePlugin(const char *pName, const char *pTitleId, PageFactory createPage)
        : m_pName(pName)
        , m_pTitleId(pTitleId)
        , m_createPage(createPage)
    {}

private:
    const char *m_pName;
    const char *m_pTitleId;
    PageFactory m_createPage;
    QPointer<QWidget> m_pPage;
};

#endif // LINKDECK_PLUGINS_PAGEPLUGIN_H

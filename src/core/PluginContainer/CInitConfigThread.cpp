#include "CInitConfigThread.h"

#include "PluginContainer.h"

bool CInitConfigThread::Init(PluginContainer *pContainer)
{
    m_pContainer = pContainer;
    return true;
}

void CInitConfigThread::run()
{
    if (m_pContainer)
        m_pContainer->startInitPluginsConfig();
}

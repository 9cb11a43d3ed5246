#include "CInitConfigThread.h"

#include "IPluginContainer.h"

bool CInitConfigThread::Init(IPluginContainer *pContainer)
{
    m_pContainer = pContainer;
    return true;
}

void CInitConfigThread::run()
{
    if (m_pContainer)
        m_pContainer->StartInitPluginsConfig();
}

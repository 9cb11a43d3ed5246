#ifndef LINKDECK_LOADINGPASSSCOPE_H
#define LINKDECK_LOADINGPASSSCOPE_H

#include "PluginContainer.h"
#include "PluginDirectoryListing.h"

#include <optional>

// Marks one loading pass of the container. The plugin directory is listed at the pass's first
// load and that listing serves every later load of the pass, so a library installed before the
// pass is seen while the directory is read once, not once per plugin. A pass begun inside another
// (plugin code loading plugins) shares the outer listing.
class LoadingPassScope
{
public:
    explicit LoadingPassScope(PluginContainer &container)
        : m_container(container)
        , m_outer(container.m_pLoadingPass)
    {
        if (!m_outer)
            m_container.m_pLoadingPass = this;
    }
    ~LoadingPassScope()
    {
        if (!m_outer)
            m_container.m_pLoadingPass = nullptr;
    }
    LoadingPassScope(const LoadingPassScope &) = delete;
    LoadingPassScope &operator=(const LoadingPassScope &) = delete;

    const PluginDirectoryListing &listing()
    {
        if (!m_listing)
            m_listing.emplace(m_container.m_pluginDir);
        return *m_listing;
    }

private:
    PluginContainer &m_container;
    LoadingPassScope *m_outer;
    std::optional<PluginDirectoryListing> m_listing;
};

#endif // LINKDECK_LOADINGPASSSCOPE_H

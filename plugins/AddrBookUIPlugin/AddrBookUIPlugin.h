#ifndef LINKDECK_ADDRBOOKUIPLUGIN_ADDRBOOKUIPLUGIN_H
#define LINKDECK_ADDRBOOKUIPLUGIN_ADDRBOOKUIPLUGIN_H

#include "ContactPage.h"
#include "PagePlugin.h"

// The address book: the contact page, with the contact's photo.
class AddrBookUIPlugin : public PagePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID IBasePlugin_iid)
    Q_INTERFACES(IBasePlugin)
public:
    AddrBookUIPlugin()
        : PagePlugin("AddrBookUIPlugin", "IDS_ADDRBOOK_TITLE", &ContactPage::create)
    {}
};

#endif // LINKDECK_ADDRBOOKUIPLUGIN_ADDRBOOKUIPLUGIN_H

#ifndef LINKDECK_TESTS_NOBASEPLUGIN_H
#define LINKDECK_TESTS_NOBASEPLUGIN_H

#include "PluginInterfaces.h"

#include <QObject>

// A Qt plugin whose object lacks the base plugin interface.
class NoBasePlugin : public QObject, public ILayout
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ILayout_iid)
    Q_INTERFACES(ILayout)

public:
    NoBasePlugin();
    ~NoBasePlugin() override;
    QWidget *GetLayoutWidget() override { return nullptr; }
};

#endif // LINKDECK_TESTS_NOBASEPLUGIN_H

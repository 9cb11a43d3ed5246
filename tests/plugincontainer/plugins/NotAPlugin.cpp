// A shared library without plugin metadata: the loader must refuse it.
#include <QtGlobal>

extern "C" Q_DECL_EXPORT int linkdeck_test_not_a_plugin()
{
    return 1;
}

#ifndef LINKDECK_COREGLOBAL_H
#define LINKDECK_COREGLOBAL_H

#include <QtCore/qglobal.h>

#if defined(CORE_LIBRARY)
#define CORE_EXPORT Q_DECL_EXPORT
#else
#define CORE_EXPORT Q_DECL_IMPORT
#endif

#endif // LINKDECK_COREGLOBAL_H

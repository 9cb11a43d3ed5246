#include "WindowsBaseStyle.h"

#include <QStyleFactory>

QStyle *createWindowsBaseStyle()
{
    return QStyleFactory::create(QStringLiteral("Windows"));
}

#ifndef LINKDECK_MENUSHARED_H
#define LINKDECK_MENUSHARED_H

#include "common/LogLine.h"
#include "common/XmlReading.h"

#include <QString>
#include <QXmlStreamReader>

// Pieces shared by the parser's reading stages, its tree operations and the builder.
namespace MenuShared {

// Every line of the menu subsystem names the parser's source file, builder lines included:
// log filters of the field key on this path.
constexpr const char kSource[] = LD_SOURCE("PopupMenu/MenuParse.cpp");

// The "parent" value of a top-level menu, and the popup name of entries placed directly in it.
inline QString topLevel()
{
    return QStringLiteral("null");
}

using XmlReading::attribute;

} // namespace MenuShared

#endif // LINKDECK_MENUSHARED_H

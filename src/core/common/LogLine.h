#ifndef LINKDECK_LOGLINE_H
#define LINKDECK_LOGLINE_H

#include <QByteArray>
#include <QString>

// Source path of a log line: the file below "../../src/core/" without its extension.
#define LD_SOURCE(relativePath) "../../src/core/" relativePath

// The common beginnings of the core's log lines. Lines are written as
//   qDebug("%s: entered", LogLine::prefix(kSource, "Function").constData());
// which gives "../../src/core/X/Y: Function: entered".
namespace LogLine {

// The current time as "hh:mm:ss:zzz".
QByteArray timeStamp();
// "<source>: <function>".
QByteArray prefix(const char *source, const char *function);
// "<source>, <function>": the window chrome's lines read "<source>, <function> : ...".
QByteArray listPrefix(const char *source, const char *function);
// "<hh:mm:ss:zzz>: <source>: <function>".
QByteArray stampedPrefix(const char *source, const char *function);
// A string argument for a "%s" of a log line.
inline QByteArray arg(const QString &text)
{
    return text.toLocal8Bit();
}

} // namespace LogLine

#endif // LINKDECK_LOGLINE_H

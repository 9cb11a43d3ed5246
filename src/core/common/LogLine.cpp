#include "LogLine.h"

#include <QTime>

namespace LogLine {

QByteArray timeStamp()
{
    return QTime::currentTime().toString(QStringLiteral("hh:mm:ss:zzz")).toLatin1();
}

QByteArray prefix(const char *source, const char *function)
{
    QByteArray line(source);
    line += ": ";
    line += function;
    return line;
}

QByteArray listPrefix(const char *source, const char *function)
{
    QByteArray line(source);
    line += ", ";
    line += function;
    return line;
}

QByteArray stampedPrefix(const char *source, const char *function)
{
    QByteArray line = timeStamp();
    line += ": ";
    line += prefix(source, function);
    return line;
}

} // namespace LogLine

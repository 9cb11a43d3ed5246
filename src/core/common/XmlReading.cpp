#include "XmlReading.h"

#include "CoreLogging.h"
#include "LogLine.h"

namespace XmlReading {

bool isStartOf(const QXmlStreamReader &reader, const char *name)
{
    return reader.isStartElement() && reader.name() == QLatin1String(name);
}

bool isEndOf(const QXmlStreamReader &reader, const char *name)
{
    return reader.isEndElement() && reader.name() == QLatin1String(name);
}

QString attribute(const QXmlStreamReader &reader, const char *name)
{
    return reader.attributes().value(QLatin1String(name)).toString();
}

bool readToNextStart(QXmlStreamReader &reader, const char *name)
{
    do {
        reader.readNext();
        if (reader.atEnd())
            return false;
    } while (!isStartOf(reader, name));
    return true;
}

QByteArray errorLine(const QXmlStreamReader &reader, const QString &pattern,
                     const QString &fileName)
{
    return LogLine::arg(pattern.arg(reader.errorString(), QString::number(reader.lineNumber()),
                                    QString::number(reader.columnNumber()), fileName));
}

FileReader::FileReader(const QString &path)
    : m_file(path)
{}

FileReader::OpenResult FileReader::open(const QLoggingCategory &category,
                                        const QByteArray &missingLine, const QByteArray &failedLine,
                                        QIODevice::OpenMode mode)
{
    if (!missingLine.isNull() && !m_file.exists()) {
        QMessageLogger().debug(category, "%s", missingLine.constData());
        return Missing;
    }
    if (!m_file.open(mode)) {
        if (!failedLine.isNull())
            QMessageLogger().debug(category, "%s", failedLine.constData());
        return Unopened;
    }
    setDevice(&m_file);
    return Opened;
}

FileReader::~FileReader()
{
    if (!device())
        return;
    while (!atEnd())
        readNext();
    if (error() == NoError)
        return;
    qCWarning(lcXml, "XML error in %s at line %lld, column %lld: %s",
              LogLine::arg(fileName()).constData(), lineNumber(), columnNumber() + 1,
              LogLine::arg(errorString()).constData());
}

} // namespace XmlReading

#ifndef LINKDECK_XMLREADING_H
#define LINKDECK_XMLREADING_H

#include <QByteArray>
#include <QFile>
#include <QIODevice>
#include <QString>
#include <QXmlStreamReader>

class QLoggingCategory;

// What every reader of the core's XML files shares: matching elements, reading attributes,
// skipping ahead, opening the file, and describing an XML error.
namespace XmlReading {

bool isStartOf(const QXmlStreamReader &reader, const char *name);
bool isEndOf(const QXmlStreamReader &reader, const char *name);
QString attribute(const QXmlStreamReader &reader, const char *name);
// Moves past the current token to the next start element of that name; false at the end.
bool readToNextStart(QXmlStreamReader &reader, const char *name);
// The reader's error in a reader's own wording: in pattern, %1 is the error text, %2 the line,
// %3 the column and %4 the file name.
QByteArray errorLine(const QXmlStreamReader &reader, const QString &pattern,
                     const QString &fileName = QString());

// A configuration file read as XML. open() logs at debug level why it could not be opened, in
// the reader's own words. When it goes, it reads what its reader left unread and reports an XML
// error as one warning in "linkdeck.core.xml" with the file, line and column (both counted from
// 1, as editors show them; the readers' own lines keep the reader's column): readers stop
// where their format says and keep their own lines at debug level, and this line tells an
// integrator why a menu or an operator is missing.
class FileReader : public QXmlStreamReader
{
public:
    explicit FileReader(const QString &path);
    ~FileReader();
    FileReader(const FileReader &) = delete;
    FileReader &operator=(const FileReader &) = delete;

    // Logs missingLine when the file does not exist (no separate check when it is null), and
    // failedLine when it cannot be opened; a null line is not logged.
    enum OpenResult { Opened, Missing, Unopened };
    OpenResult open(const QLoggingCategory &category, const QByteArray &missingLine,
                    const QByteArray &failedLine, QIODevice::OpenMode mode = QIODevice::ReadOnly);
    QString fileName() const { return m_file.fileName(); }
    QString fileError() const { return m_file.errorString(); }

private:
    QFile m_file;
};

} // namespace XmlReading

#endif // LINKDECK_XMLREADING_H

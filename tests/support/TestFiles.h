#ifndef LINKDECK_TESTS_TESTFILES_H
#define LINKDECK_TESTS_TESTFILES_H

#include <QByteArray>
#include <QString>

// Files a test writes below its own application directory.
namespace TestFiles {

// The test executable's folder, which the core uses as the application directory.
QString appDir();
// Writes contents to appDir() + relativePath ("/plugins/X/X_en-us.lang"), creating folders.
bool writeAppFile(const QString &relativePath, const QByteArray &contents);
bool writeFile(const QString &absolutePath, const QByteArray &contents);
bool removeAppPath(const QString &relativePath);
// Points the settings store at a fresh, empty file below the application directory.
QString useFreshSettings(const QString &name = QStringLiteral("settings.ini"));
// The format with the streaming reader's error for the document, its line and column as %1 %2 %3.
QString xmlError(const QByteArray &xml, const QString &format);

} // namespace TestFiles

#endif // LINKDECK_TESTS_TESTFILES_H

#ifndef LINKDECK_FUZZ_FUZZSUPPORT_H
#define LINKDECK_FUZZ_FUZZSUPPORT_H

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// FuzzSupport.cpp's LLVMFuzzerInitialize creates the offscreen application in the executable's
// folder with a private settings file (operator "nordtel"); warnings go to warnings.log there,
// everything to standard error when FUZZ_LOG is set.
namespace Fuzz {

inline QByteArray bytes(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), int(size));
}

QString appPath(const QString &relative);

// Creates the folders; returns the full path.
QString writeAppFile(const QString &relative, const QByteArray &data);

} // namespace Fuzz

#endif // LINKDECK_FUZZ_FUZZSUPPORT_H

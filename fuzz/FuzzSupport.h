#ifndef LINKDECK_FUZZ_FUZZSUPPORT_H
#define LINKDECK_FUZZ_FUZZSUPPORT_H

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

// What every fuzz target of the core shares. FuzzSupport.cpp also defines LLVMFuzzerInitialize,
// which creates the offscreen application once: its directory (the executable's own folder) is
// the application directory of the core, the settings file is a private one there with the
// operator "nordtel", debug output is off and warnings go to <application dir>/warnings.log
// (everything to standard error instead when FUZZ_LOG is set, as when replaying one input).
namespace Fuzz {

inline QByteArray bytes(const uint8_t *data, size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), int(size));
}

// <application dir>/<relative>
QString appPath(const QString &relative);

// Writes data to <application dir>/<relative>, creating the folders; returns the full path.
QString writeAppFile(const QString &relative, const QByteArray &data);

} // namespace Fuzz

#endif // LINKDECK_FUZZ_FUZZSUPPORT_H

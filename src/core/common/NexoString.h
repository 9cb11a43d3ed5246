#ifndef LINKDECK_NEXOSTRING_H
#define LINKDECK_NEXOSTRING_H

#include <NexoSdk.h>

#include <QString>

// QString holds UTF-16 code units, as the device-service library's strings do.
namespace NexoString {

// A NUL-terminated view of text, valid while text lives unchanged.
inline const NEXO_CHAR16 *of(const QString &text)
{
    return reinterpret_cast<const NEXO_CHAR16 *>(text.utf16());
}

// Decodes a value the library handed out and frees it as the library asks (array delete).
inline QString take(NEXO_CHAR16 *value)
{
    if (!value)
        return QString();
    const QString text = QString::fromUtf16(value);
    delete[] value;
    return text;
}

} // namespace NexoString

#endif // LINKDECK_NEXOSTRING_H

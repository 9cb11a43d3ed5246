#ifndef LINKDECK_TESTS_SDKTESTSTRINGS_H
#define LINKDECK_TESTS_SDKTESTSTRINGS_H

#include "NexoSdk.h"

#include <QString>

// QString's UTF-16 storage is exactly what the library's NEXO_CHAR16 strings are.
inline const NEXO_CHAR16 *nexoText(const QString &text)
{
    return reinterpret_cast<const NEXO_CHAR16 *>(text.utf16());
}

inline long setSetting(const QString &group, const QString &key, const QString &value)
{
    return NEXO_SetSettings(nexoText(group), nexoText(key), nexoText(value));
}

// The value, or a null QString when the library reports a non-zero status (kept in *status).
inline QString getSetting(const QString &group, const QString &key, long *status = nullptr)
{
    NEXO_CHAR16 *value = nullptr;
    const long result = NEXO_GetSettings(nexoText(group), nexoText(key), &value);
    if (status)
        *status = result;
    if (result != 0 || !value)
        return QString();
    const QString text = QString::fromUtf16(value);
    delete[] value;
    return text.isNull() ? QString(QLatin1String("")) : text;
}

#endif // LINKDECK_TESTS_SDKTESTSTRINGS_H

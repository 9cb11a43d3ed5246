// NEXO_GetSettings / NEXO_SetSettings: the C face of the settings store.
//
// Strings are UTF-16 and NUL-terminated. An unpaired surrogate in a group, key or value is
// rejected with NEXO_ERR_INVALID_ARGUMENT: it has no UTF-8 form, so it could not be stored and
// read back unchanged.

#include "NexoSdk.h"

#include "SettingsStore.h"
#include "Utf16.h"

extern "C" {

NEXO_API long NEXO_GetSettings(const NEXO_CHAR16 *group, const NEXO_CHAR16 *key,
                               NEXO_CHAR16 **value)
{
    if (!value)
        return NEXO_ERR_INVALID_ARGUMENT;
    *value = nullptr;
    std::string groupText;
    std::string keyText;
    if (!group || !key || !nexo::utf16ToUtf8(group, groupText) || !nexo::utf16ToUtf8(key, keyText))
        return NEXO_ERR_INVALID_ARGUMENT;
    try {
        std::string found;
        const long status = nexo::SettingsStore::instance().value(groupText, keyText, found);
        if (status == 0)
            *value = nexo::newUtf16FromUtf8(found);
        return status;
    } catch (...) { // nothing may cross the C boundary
        return NEXO_ERR_IO;
    }
}

NEXO_API long NEXO_SetSettings(const NEXO_CHAR16 *group, const NEXO_CHAR16 *key,
                               const NEXO_CHAR16 *value)
{
    std::string groupText;
    std::string keyText;
    std::string valueText;
    if (!group || !key || !value || !nexo::utf16ToUtf8(group, groupText) ||
        !nexo::utf16ToUtf8(key, keyText) || !nexo::utf16ToUtf8(value, valueText))
        return NEXO_ERR_INVALID_ARGUMENT;
    try {
        return nexo::SettingsStore::instance().setValue(groupText, keyText, valueText);
    } catch (...) { // nothing may cross the C boundary
        return NEXO_ERR_IO;
    }
}

} // extern "C"

#include "CopyTruncated.h"

#include "NexoSdk.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace nexo {

void copyTruncated(const std::string &text, char *target, size_t capacity)
{
    size_t length = text.size();
    if (length > capacity - 1) {
        length = capacity - 1;
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
            --length;
    }
    std::memcpy(target, text.data(), length);
    target[length] = '\0';
}

void fillDeviceBlock(const std::vector<std::string> &names, void *block)
{
    auto *bytes = static_cast<char *>(block);
    const auto count =
        static_cast<std::int32_t>(std::min<size_t>(names.size(), NEXO_DEVICE_LIST_MAX));
    std::memcpy(bytes + NEXO_DEVICE_LIST_COUNT_OFFSET, &count, sizeof count);
    for (std::int32_t i = 0; i < count; ++i)
        copyTruncated(names[static_cast<size_t>(i)],
                      bytes + NEXO_DEVICE_LIST_NAMES_OFFSET + i * NEXO_DEVICE_NAME_SLOT,
                      NEXO_DEVICE_NAME_SLOT);
}

} // namespace nexo

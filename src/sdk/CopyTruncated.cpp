#include "CopyTruncated.h"

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

} // namespace nexo

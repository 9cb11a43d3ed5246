#ifndef NEXO_COPYTRUNCATED_H
#define NEXO_COPYTRUNCATED_H

#include <cstddef>
#include <string>
#include <vector>

namespace nexo {

// Copies text into the fixed-size block the C API hands out, NUL-terminated and cut to fit
// without splitting a UTF-8 sequence, so that no caller ever reads half a character.
void copyTruncated(const std::string &text, char *target, size_t capacity);

// Writes the device list block: the count, then one name per fixed slot, as many as fit.
void fillDeviceBlock(const std::vector<std::string> &names, void *block);

} // namespace nexo

#endif // NEXO_COPYTRUNCATED_H

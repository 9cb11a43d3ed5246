#ifndef NEXO_COPYTRUNCATED_H
#define NEXO_COPYTRUNCATED_H

#include <cstddef>
#include <string>

namespace nexo {

// Copies text into the fixed-size block the C API hands out, NUL-terminated and cut to fit
// without splitting a UTF-8 sequence, so that no caller ever reads half a character.
void copyTruncated(const std::string &text, char *target, size_t capacity);

} // namespace nexo

#endif // NEXO_COPYTRUNCATED_H

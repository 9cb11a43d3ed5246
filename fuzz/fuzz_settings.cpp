// The settings file parser of the device-service library, with its round trip: a document that
// parses serializes to text that parses to the same content and serializes to the same bytes.
#include "IniDocument.h"

#include <cstdio>
#include <cstdlib>

namespace {

void require(bool ok, const char *what, const std::string &serialized)
{
    if (ok)
        return;
    std::fprintf(stderr, "settings round trip: %s; serialized:\n%.2000s\n", what,
                 serialized.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using nexo::IniDocument;
    const auto first = IniDocument::parse({reinterpret_cast<const char *>(data), size});
    if (!first)
        return 0;
    const std::string text = first->serialize();
    const auto second = IniDocument::parse(text);
    require(second.has_value(), "the serialized document does not parse", text);
    require(*second == *first, "the content differs", text);
    require(second->serialize() == text, "serializing it again gives other bytes", text);
    return 0;
}

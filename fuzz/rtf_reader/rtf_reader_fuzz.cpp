// Reads arbitrary bytes as RTF, then writes the document and reads that back:
// neither step may crash, and what the writer produces must read again as the
// same document.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "text/rich_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    ZoRichText document;
    if (!document.SetRTF(input)) {
        return 0;
    }
    ZoString written;
    document.GetRTF(written);
    ZoRichText again;
    if (!again.SetRTF(written) || again.Text() != document.Text()) {
        std::abort();
    }
    return 0;
}

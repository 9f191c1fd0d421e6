// Reads arbitrary bytes as RTF, lays the document out, then writes it and
// reads that back: no step may crash or hang, and what the writer produces
// must read again as the same text.
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
    document.SetPageSize(120, 80);
    for (const auto& line : document.Lines()) {
        if (line.items.empty()) {
            std::abort();
        }
    }
    ZoString written;
    document.GetRTF(written);
    ZoRichText again;
    if (!again.SetRTF(written) || again.Text() != document.Text()) {
        std::abort();
    }
    return 0;
}

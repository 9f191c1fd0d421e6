#pragma once
// Writes rich-text runs as the RTF subset Vimbo stores in project files and
// puts on the clipboard. The output is fixed byte for byte: the same document
// always gives the same bytes.
#include <cstdint>
#include <vector>

#include "text/text_layout.h"

struct ZoRtfWriteOptions {
    size_t selectionStart = 0;  ///< byte offsets into the runs' text
    size_t selectionEnd = 0;
    int32_t logPixels = 96;
    bool suppressIds = false;  ///< leave "\id" tags out
};

/// The runs that the selection covers as RTF. Text is converted from UTF-8 to
/// Windows-1252; characters the code page lacks are written as "\uN?".
ZoString ZoWriteRtf(const std::vector<ZoTextRun>& runs, const ZoTextFormat& defaultStyle,
                    const ZoRtfWriteOptions& options);

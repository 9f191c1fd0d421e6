#pragma once
// Which JPEG files can go into a movie with their own bytes. Old players
// decode only sequential Huffman-coded JPEG in grey or YCbCr colour; anything
// else (progressive, arithmetic, CMYK) has to be re-encoded lossless.
#include "platform/zo_string.h"

/// True when the file at `path` is a JPEG a Flash player shows as it is:
/// its first frame header is baseline or extended sequential (SOF0, SOF1)
/// with one or three components.
bool TeskIsPlayableJpegFile(const ZoString& path);

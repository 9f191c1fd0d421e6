#pragma once
// Rendered frames as files: PNG pictures and animated GIFs, encoded in
// memory so that callers can write them atomically.
#include <cstdint>
#include <memory>
#include <vector>

#include "render/movie_player.h"

/// The frame as an 8-bit RGB PNG file (frames are opaque).
std::vector<uint8_t> ZoEncodePng(const ZoRgbaImage& image);

/// An animated GIF that loops for ever, built one frame at a time. Each
/// frame gets its own 256-colour palette, chosen by median cut.
class ZoGifEncoder {
  public:
    /// Every frame shows for `frameRate`'s frame time, rounded to the GIF's
    /// hundredths of a second (at least one). Throws ZoException.
    ZoGifEncoder(int32_t width, int32_t height, double frameRate);
    ZoGifEncoder(const ZoGifEncoder&) = delete;
    ZoGifEncoder& operator=(const ZoGifEncoder&) = delete;
    ~ZoGifEncoder();

    /// Appends a frame of the size given at construction. Throws ZoException.
    void AddFrame(const ZoRgbaImage& image);
    /// Ends the file and returns its bytes. Throws ZoException.
    std::vector<uint8_t> Finish();

  private:
    struct Stream;
    std::unique_ptr<Stream> stream_;
};

#pragma once
// Our own player for the movies Vimbo writes. It keeps the display list frame
// by frame and draws any frame on its own, anti-aliased with four samples a
// pixel as Ruffle draws, so the editor's preview, `vimbo render` and the tests
// all see the same pictures without a Flash player.
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

/// A rendered frame: straight (not premultiplied) RGBA, 8 bits a channel,
/// rows top-down with no padding (stride = width * 4). Frames are opaque:
/// the movie's background colour lies under everything.
struct ZoRgbaImage {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> rgba;
};

/// A parsed movie that renders its frames on demand. Loading does all the
/// parsing and decoding; rendering changes nothing in the player, so frames
/// can be drawn in any order. Use one player from one thread at a time.
class ZoMoviePlayer {
  public:
    /// Parses an uncompressed SWF movie held in memory. Throws ZoException
    /// with one line fit to show when the bytes are not a movie it can play
    /// (truncated, compressed, corrupt records, unknown characters).
    explicit ZoMoviePlayer(std::span<const uint8_t> bytes);
    /// Reads and parses the movie at `path`; throws ZoException naming the
    /// file when it cannot be read, or as the constructor above.
    static ZoMoviePlayer FromFile(const std::filesystem::path& path);

    ZoMoviePlayer(ZoMoviePlayer&&) noexcept;
    ZoMoviePlayer& operator=(ZoMoviePlayer&&) noexcept;
    ~ZoMoviePlayer();

    /// Frames of the main timeline (at least 1).
    int32_t FrameCount() const noexcept;
    /// Frames per second as the header stores it (8.8 fixed point).
    double FrameRate() const noexcept;
    /// The stage size in pixels (the header's frame size, rounded up).
    int32_t Width() const noexcept;
    int32_t Height() const noexcept;

    /// Draws frame `frame` (zero based; taken modulo FrameCount(), as the
    /// player loops) at `scale` times the stage size (each side rounded up,
    /// at least 1 pixel). `scale` must be positive; throws ZoException when
    /// a side would exceed 32767 pixels.
    ZoRgbaImage RenderFrame(int32_t frame, double scale = 1.0) const;
    /// As RenderFrame, into `image`, reusing its memory when the size fits:
    /// a preview that plays the movie allocates nothing per frame.
    void RenderFrameInto(int32_t frame, double scale, ZoRgbaImage& image) const;

  private:
    struct Movie;
    std::unique_ptr<const Movie> movie_;
};

#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

namespace playback {

/// One pixel, 8 bits per channel, not premultiplied.
struct Rgba {
    std::uint8_t r = 0;
    std::uint8_t g = 0;
    std::uint8_t b = 0;
    std::uint8_t a = 255;

    friend bool operator==(const Rgba&, const Rgba&) = default;
};

static_assert(sizeof(Rgba) == 4, "libpng writes rows of RGBA bytes straight into Rgba");

/// A decoded picture, rows top to bottom.
class PngImage {
  public:
    PngImage() = default;
    PngImage(int width, int height, Rgba fill = {});

    int Width() const noexcept { return width_; }
    int Height() const noexcept { return height_; }
    bool Contains(int x, int y) const noexcept {
        return x >= 0 && y >= 0 && x < width_ && y < height_;
    }
    /// The pixel at (x, y); the caller keeps (x, y) inside the picture.
    Rgba At(int x, int y) const { return pixels_[Index(x, y)]; }
    void Set(int x, int y, Rgba colour) { pixels_[Index(x, y)] = colour; }
    /// The first pixel of row y; a row holds Width() pixels.
    Rgba* Row(int y) { return &pixels_[Index(0, y)]; }

  private:
    std::size_t Index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
               static_cast<std::size_t>(x);
    }

    int width_ = 0;
    int height_ = 0;
    std::vector<Rgba> pixels_;
};

/// Decodes any PNG (palette, grey, 16-bit, with or without alpha) to 8-bit RGBA.
/// Throws std::runtime_error naming the file when it cannot be read.
PngImage ReadPng(const std::filesystem::path& path);

}  // namespace playback

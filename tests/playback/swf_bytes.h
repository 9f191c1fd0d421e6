#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "playback/pixel_checks.h"

namespace playback {

/// Multiplies each channel by `multiply` / 256, then adds `add` (-255..255).
struct ColourTransform {
    int multiply[4] = {256, 256, 256, 256};  // red, green, blue, alpha
    int add[4] = {0, 0, 0, 0};
};

/// Writes tiny SWF 5 movies tag by tag, straight from the file format, so the
/// harness can be checked without the movie writer under test.
class SwfBytes {
  public:
    SwfBytes(int widthPixels, int heightPixels, int framesPerSecond);

    SwfBytes& Background(Rgb colour);
    /// DefineShape: a filled rectangle from (0, 0) to the given size.
    SwfBytes& Rectangle(std::uint16_t id, int widthPixels, int heightPixels, Rgb fill);
    /// PlaceObject2 of a new character, translated, with an optional colour transform.
    SwfBytes& Place(std::uint16_t depth, std::uint16_t id, int xPixels, int yPixels,
                    std::optional<ColourTransform> transform = std::nullopt);
    /// PlaceObject2 that moves what is at `depth`.
    SwfBytes& Move(std::uint16_t depth, int xPixels, int yPixels);
    SwfBytes& ShowFrame();
    /// Appends End and returns the whole file.
    std::vector<std::uint8_t> Finish();

  private:
    void Tag(int code, const std::vector<std::uint8_t>& body);

    int width_;
    int height_;
    int framesPerSecond_;
    int frames_ = 0;
    std::vector<std::uint8_t> tags_;
};

/// Where the first tag of a movie starts: after the header, the stage RECT,
/// the frame rate and the frame count. Tests damage movies there.
std::size_t FirstTagOffset(const std::vector<std::uint8_t>& movie);

}  // namespace playback

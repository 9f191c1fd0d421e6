#pragma once
// Movies that show every kind of fill, mask, sprite, colour transform and
// text our SWF writer makes, at known places: for checking players (Ruffle,
// and our own) against each other.
#include <filesystem>

namespace SwfTest {

/// On white, 80 x 60 pixels: a 2 x 2 bitmap blown up to 20 x 20 at the top
/// left; a green square masked to (20..40, 0..20); a yellow triangle drawn
/// clockwise at the top right; a black square turned blue by a colour
/// transform inside a sprite at (60, 25); a black-to-white gradient along the
/// bottom strip.
void WriteFeatureMovie(const std::filesystem::path& file);

/// On white, 40 x 40 pixels: one 20-pixel square glyph in black with its
/// baseline at y = 30, from x = 10 to 30.
void WriteTextMovie(const std::filesystem::path& file);

}  // namespace SwfTest

#pragma once
// Compilation of a document into one SWF movie: header values from the movie
// settings, each effect's frames with their holds in list order, and the
// movie-wide pieces in frame 0.
#include <filesystem>

#include "platform/zo_auto_ptr.h"
#include "platform/zo_string.h"

class TeskEffect;
class TeskFile;
class TeskObject;
class TeskSWFMovie;

/// Depths of the movie-wide pieces; effects place theirs from 100 up.
inline constexpr int kTeskClipMaskDepth = 1;
inline constexpr int kTeskBackgroundDepth = 2;
inline constexpr int kTeskForegroundDepth = 10000;
inline constexpr int kTeskLinkButtonDepth = 10001;

/// The frame action that makes the player hide its context menu.
inline constexpr const char* kTeskHideMenuScript = "_GetURL(\"FSCommand:showmenu\", \"false\");";

/// Appends `effect` and its start and finish hold frames to scene 0 of
/// `movie` (which must have its scene). There is always at least one frame
/// afterwards.
void CompileEffectFrames(TeskSWFMovie& movie, TeskEffect& effect, int frameRate);

/// Places the background, foreground, clipping mask and link button
/// permanently in frame 0 of scene 0. An empty `url` means no button.
void AddMovieWideObjects(TeskSWFMovie& movie, TeskObject* foreground, TeskObject* background,
                         bool clip, const ZoString& url, const ZoString& target);

/// The whole document as a movie in memory, ready to write.
ZoAutoPtr<TeskSWFMovie> TeskBuildMovie(const TeskFile& file);

/// Builds the document's movie and writes it to `swfPath` atomically. Throws
/// ZoException with a message fit to show when the movie cannot be made or
/// written; an existing file is then left as it was.
void TeskWriteMovie(const TeskFile& file, const std::filesystem::path& swfPath);

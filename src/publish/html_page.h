#pragma once
// The HTML page that embeds a published movie, filled in from the template
// compiled into the program.
#include <cstdint>
#include <filesystem>
#include <string_view>

#include "platform/zo_colour.h"
#include "platform/zo_string.h"

/// What the page says about its movie.
struct TeskHtmlPageValues {
    /// Page title; the movie's script name is made from it.
    ZoString title;
    /// How the page refers to the movie: its file name beside the page, or a
    /// "file://" address for the temporary test page.
    ZoString swfReference;
    COLORREF backgroundColour = 0xFFFFFF;
    int32_t width = 0;
    int32_t height = 0;
    /// Hides the player's context menu (the page's "menu" parameter is "false").
    bool disableRightClick = true;
};

/// The template with every placeholder replaced; lines end with CR LF.
ZoString TeskMakeHtmlPage(const TeskHtmlPageValues& values);

/// The template exactly as compiled in.
std::string_view TeskHtmlTemplate();

/// A name usable both as an HTML id and as a script identifier: letters,
/// digits and underscores, never starting with a digit, never empty.
ZoString TeskConvertToLegalIdentifier(std::string_view title);

/// The page title for a project file: its name without folder and extension,
/// or "Untitled" for a document that was never saved.
ZoString TeskHtmlTitle(std::string_view projectFilename);

/// The published page beside a movie: same folder and name, ".html".
std::filesystem::path TeskHtmlPathFor(const std::filesystem::path& swfPath);

#pragma once
// `vimbo render`: frames of a movie or project as PNG pictures and GIF.
namespace CLI {
class App;
}

/// `vimbo render MOVIE.swf|PROJECT -o DIR [--frames LIST] [--scale N]
/// [--gif FILE]`.
void VimboAddRenderCommand(CLI::App& app);

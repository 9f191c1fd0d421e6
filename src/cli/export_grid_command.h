#pragma once
// `vimbo export-grid`: a project's morph mesh as the C header from which the
// built-in preset grid is made.
namespace CLI {
class App;
}

/// `vimbo export-grid PROJECT [--effect N] -o FILE.h [--force]`.
void VimboAddExportGridCommand(CLI::App& app);

#include "cli/export_grid_command.h"

#include <CLI/CLI.hpp>

#include "cli/output_file.h"
#include "document/json_project.h"
#include "effects/morph_effect.h"
#include "effects/register_effects.h"
#include "geometry/edit_grid_triangulation.h"
#include "platform/atomic_file.h"
#include "platform/zo_exception.h"

namespace {

struct ExportGridOptions {
    std::string project;
    std::string output;
    int effect = 0;  // counted from 1 as the editor shows them
    bool effectGiven = false;
    bool force = false;
};

const TeskMorphEffect* FirstMorph(const TeskFile& document) {
    for (int i = 0; i < document.GetEffectCount(); ++i) {
        if (const auto* morph = dynamic_cast<const TeskMorphEffect*>(document.GetEffect(i)))
            return morph;
    }
    throw ZoException("The project has no morph effect");
}

const TeskMorphEffect& NumberedMorph(const TeskFile& document, int number) {
    const int count = document.GetEffectCount();
    if (number < 1 || number > count) {
        throw ZoException(ZoFormat("There is no effect %d: the project has %d effect%s", number,
                                   count, count == 1 ? "" : "s"));
    }
    const TeskEffect& effect = *document.GetEffect(number - 1);
    const auto* morph = dynamic_cast<const TeskMorphEffect*>(&effect);
    if (!morph) {
        throw ZoException(ZoFormat("Effect %d is a %s effect, not a morph", number,
                                   effect.GetInfo().name.c_str()));
    }
    return *morph;
}

void RunExportGrid(const ExportGridOptions& options) {
    VimboRefuseToReplace(options.output, options.force);
    TeskRegisterEffects();
    TeskFile document;
    TeskLoadProjectFile(document, options.project);
    const TeskMorphEffect& morph =
        options.effectGiven ? NumberedMorph(document, options.effect) : *FirstMorph(document);
    const TeskEditGridTriangulation* grid = morph.GetEditGrid();
    if (!grid)
        throw ZoException("The morph's mesh is not an editable grid");
    // Written beside the target and renamed over it: never a partial file.
    ZoWriteFileAtomically(options.output, grid->PresetHeaderText());
}

}  // namespace

void VimboAddExportGridCommand(CLI::App& app) {
    auto options = std::make_shared<ExportGridOptions>();
    CLI::App* command = app.add_subcommand(
        "export-grid", "Write a morph effect's grid as the C header TeskMorphPreset.h");
    command->add_option("project", options->project, "Project (.vmb or .json) holding the morph")
        ->required();
    CLI::Option* effect = command->add_option(
        "--effect", options->effect,
        "Number of the morph effect, counted from 1; the first morph by default");
    command->add_option("-o,--output", options->output, "Header file to write")->required();
    command->add_flag("--force", options->force, "Replace the output file if it exists");
    command->callback([options, effect] {
        options->effectGiven = effect->count() > 0;
        RunExportGrid(*options);
    });
}

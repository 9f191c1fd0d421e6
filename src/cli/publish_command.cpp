#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>

#include "cli/project_commands.h"
#include "document/json_project.h"
#include "effects/register_effects.h"
#include "platform/temp_directory.h"
#include "platform/zo_exception.h"
#include "publish/html_page.h"
#include "publish/publisher.h"

namespace {

namespace fs = std::filesystem;

struct PublishOptions {
    std::string project;
    std::string output;
    bool html = false;
    bool open = false;
    bool force = false;
};

// Answers publishing's questions from the flags and gathers its messages, so
// that the command can fail with them once publishing is over.
class CommandLinePublishUi : public TeskPublishUi {
  public:
    explicit CommandLinePublishUi(bool force) : force_(force) {}

    OverwriteAnswer AskOverwrite(const ZoString&, const std::vector<fs::path>& existing) override {
        if (!force_) {
            throw ZoException(ZoFormat("'%s' already exists; use --force to replace it",
                                       existing.front().c_str()));
        }
        return {true, false};
    }
    void MovieNotWritten(const ZoString& reason) override {
        // Stops before the page is written: no page for a movie that is not there.
        throw ZoException(reason);
    }
    void ShowMessage(const ZoString& message) override { messages_.push_back(message); }
    bool Open(const fs::path& path) override {
        const std::string command =
            "xdg-open '" + EscapeQuotes(path.string()) + "' >/dev/null 2>&1";
        return std::system(command.c_str()) == 0;
    }

    void ThrowIfSomethingFailed() const {
        if (messages_.empty())
            return;
        ZoString all = messages_.front();
        for (size_t i = 1; i < messages_.size(); ++i)
            all += " " + messages_[i];
        throw ZoException(all);
    }

  private:
    static std::string EscapeQuotes(const std::string& text) {
        std::string escaped;
        for (char c : text)
            escaped += c == '\'' ? std::string("'\\''") : std::string(1, c);
        return escaped;
    }

    bool force_;
    std::vector<ZoString> messages_;
};

// Publishing makes missing folders for the editor's chosen location; on the
// command line a missing folder is more likely a typing mistake.
void RequireFileInExistingFolder(const fs::path& output) {
    std::error_code error;
    if (fs::is_directory(output, error))
        throw ZoException(ZoFormat("'%s' is a folder, not a file", output.c_str()));
    const fs::path folder = fs::absolute(output, error).parent_path();
    if (!fs::is_directory(folder, error))
        throw ZoException(ZoFormat("The folder '%s' does not exist", folder.c_str()));
}

void RunPublish(const PublishOptions& options) {
    RequireFileInExistingFolder(options.output);
    const ZoString location = TeskCompletePublishLocation(options.output);
    RequireFileInExistingFolder(location);
    TeskRegisterEffects();
    TeskFile document;
    if (!options.project.empty())
        TeskLoadProjectFile(document, options.project);
    TeskPublishSettings& settings = document.GetPublishSettings();
    settings.SetLocation(location);
    settings.embedHTML = options.html;
    settings.testImmediately = options.open;
    CommandLinePublishUi ui(options.force);
    TeskPublisher(document, ui, ZoProcessTempDirectory()).Publish();
    ui.ThrowIfSomethingFailed();
    std::cout << location << "\n";
    if (options.html)
        std::cout << TeskHtmlPathFor(location).string() << "\n";
}

}  // namespace

void VimboAddPublishCommand(CLI::App& app) {
    auto options = std::make_shared<PublishOptions>();
    CLI::App* command = app.add_subcommand(
        "publish", "Publish a project (.vmb or .json) as an SWF movie, optionally with its page");
    command->add_option("project", options->project,
                        "Project to publish; the default document when left out");
    command->add_option("-o,--output", options->output, "Movie to write (.swf)")->required();
    command->add_flag("--html", options->html, "Also write the HTML page beside the movie");
    command->add_flag("--open", options->open, "Open the result once it is written");
    command->add_flag("--force", options->force, "Replace the movie and page if they exist");
    command->callback([options] { RunPublish(*options); });
}

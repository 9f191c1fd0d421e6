// vimbo-screenshots EXAMPLES OUTDIR: pictures of the editor and its object
// dialog for the documentation (`make screenshots`). Runs without a screen, with settings
// of its own, so nothing of the user's shows up in the pictures.
#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <cstdlib>
#include <iostream>

#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/help_topics.h"
#include "app/screenshots.h"
#include "app/user_prompts.h"
#include "platform/zo_exception.h"

namespace {

/// Nobody is there to answer: every message is an error, every question
/// is declined.
class UnattendedPrompts final : public TeskUserPrompts {
  public:
    void ShowMessage(std::string_view text) override {
        std::cerr << "vimbo-screenshots: " << text << '\n';
        failed = true;
    }
    bool AskYesNo(std::string_view) override { return false; }
    Answer AskYesNoCancel(std::string_view) override { return Answer::kNo; }
    bool AskOverwrite(std::string_view, bool&) override { return false; }
    std::optional<std::filesystem::path> AskOpenPath(const std::filesystem::path&) override {
        return std::nullopt;
    }
    std::optional<std::filesystem::path> AskSavePath(const std::filesystem::path&, std::string_view,
                                                     std::string_view) override {
        return std::nullopt;
    }
    bool RunDialog(QDialog&) override { return false; }
    bool OpenWithDesktop(const ZoString&) override { return false; }

    bool failed = false;
};

// The offscreen platform warns about every window it cannot size for a
// window manager; that is expected here and only hides real messages.
void DropOffscreenNoise(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (text.contains(QStringLiteral("propagateSizeHints")))
        return;
    std::cerr << qFormatLogMessage(type, context, text).toStdString() << '\n';
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: vimbo-screenshots EXAMPLES OUTDIR\n";
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(DropOffscreenNoise);
    QApplication application(argc, argv);
    // One style and a steady text cursor whatever the desktop says.
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setCursorFlashTime(0);
    QTemporaryDir settingsFolder;
    QSettings settings(settingsFolder.filePath(QStringLiteral("settings.ini")),
                       QSettings::IniFormat);
    UnattendedPrompts prompts;
    const std::filesystem::path examples(argv[1]);
    TeskEditorApp app(settings, prompts, {{}, examples});
    TeskEditorDlg window(app);
    window.show();
    try {
        auto written = TeskTakeScreenshots(app, window, TeskPlanScreenshots(examples), argv[2]);
        for (const std::filesystem::path& picture :
             TeskTakeObjectScreenshots(app, TeskPlanObjectScreenshots(examples), argv[2]))
            written.push_back(picture);
        for (const std::filesystem::path& picture : written)
            std::cout << picture.string() << '\n';
    } catch (const ZoException& error) {
        std::cerr << "vimbo-screenshots: " << error.what() << '\n';
        return 1;
    }
    return prompts.failed ? 1 : 0;
}

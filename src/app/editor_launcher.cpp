#include "app/editor_launcher.h"

#include <QApplication>
#include <QSettings>
#include <QTimer>
#include <cstdlib>
#include <iostream>

#include "app/app_settings.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/splash_window.h"
#include "app/tip_of_the_day.h"
#include "app/user_prompts.h"

namespace {

bool HasDisplay() {
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
        const char* value = std::getenv(variable);
        if (value && *value)
            return true;
    }
    return false;
}

}  // namespace

int TeskRunEditor(int& argc, char** argv, const std::string& projectFile) {
    if (!HasDisplay()) {
        std::cerr << "vimbo: no display to open the editor on; see 'vimbo --help' for the "
                     "commands that work without one\n";
        return EXIT_FAILURE;
    }
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("Kestrane"));
    QApplication::setApplicationName(QStringLiteral("Vimbo"));
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("vimbo")));
    QSettings settings(QStringLiteral("Kestrane"), QStringLiteral("Vimbo"));
    // Holding Alt+Ctrl while the editor starts returns every setting to its default.
    const Qt::KeyboardModifiers held = QGuiApplication::queryKeyboardModifiers();
    if ((held & Qt::AltModifier) && (held & Qt::ControlModifier))
        TeskResetSettings(settings);

    TeskSplashWindow splash;
    splash.show();
    QApplication::processEvents();

    TeskQtUserPrompts prompts;
    const std::filesystem::path program(QCoreApplication::applicationDirPath().toStdString());
    TeskEditorApp app(settings, prompts, TeskLocateInstallFolders(program));
    if (!projectFile.empty())
        app.Open(std::filesystem::absolute(projectFile).string());
    TeskEditorDlg window(app);
    prompts.SetParent(&window);
    window.show();
    splash.finish(&window);
    if (TeskTipOfTheDay::ShowsAtStartup(settings)) {
        // Offered once the window is up, so the tip has something to sit on.
        QTimer::singleShot(0, &window, [&] {
            TeskTipOfTheDay tip(settings, &window);
            prompts.RunDialog(tip);
        });
    }
    return QApplication::exec();
}

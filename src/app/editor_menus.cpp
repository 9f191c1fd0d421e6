// The main window's menus and tool bar, and the commands that open the
// window's own dialogs.
#include <QAction>
#include <QMenuBar>
#include <QToolBar>
#include <QWhatsThis>

#include "app/about_dialog.h"
#include "app/editor_app.h"
#include "app/editor_window.h"
#include "app/help_topics.h"
#include "app/link_url_dialog.h"
#include "app/movie_properties_dialog.h"
#include "app/object_dialog.h"
#include "app/tip_of_the_day.h"
#include "app/user_prompts.h"
#include "document/file.h"

namespace {

QString ToQString(const ZoString& text) {
    return QString::fromStdString(text);
}

}  // namespace

QAction* TeskEditorDlg::AddCommand(QMenu* menu, const char* text, const char* name,
                                   void (TeskEditorDlg::*handler)()) {
    QAction* action = menu->addAction(QString::fromUtf8(text));
    action->setObjectName(QString::fromUtf8(name));
    connect(action, &QAction::triggered, this, handler);
    return action;
}

void TeskEditorDlg::CreateMenus() {
    CreateFileMenu();
    CreateEditMenu();
    CreateEffectsMenu();
    CreateHelpMenu();
}

void TeskEditorDlg::CreateFileMenu() {
    fileMenu_ = menuBar()->addMenu(QStringLiteral("&File"));
    auto* toolBar = addToolBar(QStringLiteral("Main"));
    toolBar->setObjectName(QStringLiteral("mainToolBar"));
    toolBar->setMovable(false);
    const auto addFileCommand = [&](const char* text, const char* name,
                                    QKeySequence::StandardKey key, auto handler) {
        QAction* action = fileMenu_->addAction(QString::fromUtf8(text));
        action->setObjectName(QString::fromUtf8(name));
        action->setShortcut(key);
        // Saving and opening change the title without any document hint.
        connect(action, &QAction::triggered, this, [this, handler] {
            handler();
            UpdateTitle();
        });
        return action;
    };
    toolBar->addAction(
        addFileCommand("&New", "fileNew", QKeySequence::New, [this] { app_.OnFileNew(); }));
    toolBar->addAction(
        addFileCommand("&Open...", "fileOpen", QKeySequence::Open, [this] { app_.OnFileOpen(); }));
    toolBar->addAction(
        addFileCommand("&Save", "fileSave", QKeySequence::Save, [this] { app_.OnFileSave(); }));
    addFileCommand("Save &As...", "fileSaveAs", QKeySequence::SaveAs,
                   [this] { app_.OnFileSaveAs(); });
    fileMenu_->addSeparator();
    QAction* publish = fileMenu_->addAction(QStringLiteral("&Publish"));
    publish->setObjectName(QStringLiteral("publish"));
    publish->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return));
    connect(publish, &QAction::triggered, this, [this] { app_.OnPublish(); });
    toolBar->addAction(publish);
    QAction* quickPublish = fileMenu_->addAction(QStringLiteral("&Quick Publish"));
    quickPublish->setObjectName(QStringLiteral("quickPublish"));
    quickPublish->setStatusTip(QStringLiteral("Publish the file using the previous settings"));
    connect(quickPublish, &QAction::triggered, this, [this] { app_.OnQuickPublish(); });
    fileMenu_->addSeparator();
    recentPlaceholder_ = fileMenu_->addAction(QStringLiteral("Recent File"));
    fileMenu_->addSeparator();
    QAction* exit = fileMenu_->addAction(QStringLiteral("&Exit"));
    exit->setShortcut(QKeySequence::Quit);
    connect(exit, &QAction::triggered, this, &QWidget::close);
    connect(fileMenu_, &QMenu::aboutToShow, this, &TeskEditorDlg::UpdateRecentFileMenu);
    UpdateRecentFileMenu();
}

void TeskEditorDlg::UpdateRecentFileMenu() {
    for (QAction* action : fileMenu_->actions()) {
        if (action->property("recentIndex").isValid()) {
            fileMenu_->removeAction(action);
            action->deleteLater();
        }
    }
    const std::vector<ZoString>& entries = app_.GetRecentFiles().GetEntries();
    recentPlaceholder_->setVisible(entries.empty());
    recentPlaceholder_->setEnabled(false);
    for (size_t i = 0; i < entries.size(); ++i) {
        auto* action =
            new QAction(QStringLiteral("&%1 %2").arg(i + 1).arg(ToQString(entries[i])), fileMenu_);
        action->setProperty("recentIndex", static_cast<int>(i));
        connect(action, &QAction::triggered, this,
                [this, i] { app_.OnOpenRecentFile(static_cast<int>(i)); });
        fileMenu_->insertAction(recentPlaceholder_, action);
    }
}

void TeskEditorDlg::CreateEditMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Edit"));
    undo_ = menu->addAction(QString());
    undo_->setObjectName(QStringLiteral("undo"));
    undo_->setShortcut(QKeySequence::Undo);
    // The history moves after it has delivered its hints, so the items and
    // the title are brought up to date once it has.
    connect(undo_, &QAction::triggered, this, [this] {
        app_.GetDocument().GetUndoList().Undo();
        UpdateUndoItems();
        UpdateTitle();
    });
    redo_ = menu->addAction(QString());
    redo_->setObjectName(QStringLiteral("redo"));
    redo_->setShortcut(QKeySequence::Redo);
    connect(redo_, &QAction::triggered, this, [this] {
        app_.GetDocument().GetUndoList().Redo();
        UpdateUndoItems();
        UpdateTitle();
    });
    menu->addSeparator();
    AddCommand(menu, "&Movie Properties...", "movieProperties", &TeskEditorDlg::OnMovieProperties);
    AddCommand(menu, "Fit To &Object", "fitToObject", &TeskEditorDlg::OnFitToObject);
    AddCommand(menu, "&Link URL...", "linkURL", &TeskEditorDlg::OnLinkURL);
    menu->addSeparator();
    QAction* foreground = menu->addAction(QStringLiteral("&Foreground Object"));
    foreground->setObjectName(QStringLiteral("foregroundObject"));
    connect(foreground, &QAction::triggered, this, [this] { EditMovieObject(true); });
    QAction* background = menu->addAction(QStringLiteral("&Background Object"));
    background->setObjectName(QStringLiteral("backgroundObject"));
    connect(background, &QAction::triggered, this, [this] { EditMovieObject(false); });
    connect(menu, &QMenu::aboutToShow, this, &TeskEditorDlg::UpdateUndoItems);
    UpdateUndoItems();
}

void TeskEditorDlg::UpdateUndoItems() {
    const ZoEditor::ZoUndoList& history = app_.GetDocument().GetUndoList();
    const int position = history.GetPosition();
    undo_->setEnabled(history.CanUndo());
    undo_->setText(history.CanUndo()
                       ? QStringLiteral("&Undo %1").arg(ToQString(history.GetName(position - 1)))
                       : QStringLiteral("Can't Undo"));
    redo_->setEnabled(history.CanRedo());
    redo_->setText(history.CanRedo()
                       ? QStringLiteral("&Redo %1").arg(ToQString(history.GetName(position)))
                       : QStringLiteral("Can't Redo"));
}

void TeskEditorDlg::CreateEffectsMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("Effe&cts"));
    for (int i = 0; i < TeskEffect::GetCount(); ++i) {
        QAction* action = menu->addAction(ToQString(TeskEffect::GetInfo(i).name));
        connect(action, &QAction::triggered, this, [this, i] { OnEffectChosen(i); });
    }
}

void TeskEditorDlg::CreateHelpMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Help"));
    const auto addTopic = [&](const char* text, std::string_view topic) {
        QAction* action = menu->addAction(QString::fromUtf8(text));
        connect(action, &QAction::triggered, this,
                [this, topic] { app_.GetHelp().ShowTopic(topic); });
        return action;
    };
    addTopic("&Contents", kTeskHelpContents)->setShortcut(QKeySequence::HelpContents);
    addTopic("&Search", kTeskHelpSearch);
    addTopic("&Index", kTeskHelpIndex);
    QAction* whatsThis = menu->addAction(QStringLiteral("What's &This?"));
    whatsThis->setObjectName(QStringLiteral("whatsThis"));
    // Shift+F1 already enters the mode through the window's context help.
    connect(whatsThis, &QAction::triggered, this, [] { QWhatsThis::enterWhatsThisMode(); });
    QMenu* samples = menu->addMenu(QStringLiteral("Samples"));
    samples->setObjectName(QStringLiteral("samplesMenu"));
    for (const std::filesystem::path& sample : app_.GetSamples()) {
        // "image_cross_fade.json" reads as "image cross fade".
        QAction* action = samples->addAction(QString::fromStdString(sample.stem().string())
                                                 .replace(QLatin1Char('_'), QLatin1Char(' ')));
        connect(action, &QAction::triggered, this, [this, sample] { app_.OpenSample(sample); });
    }
    samples->setEnabled(!samples->isEmpty());
    menu->addSeparator();
    QAction* support = menu->addAction(QStringLiteral("Contact Technical Support"));
    connect(support, &QAction::triggered, this, [this] { app_.OnContactSupport(); });
    QAction* tip = menu->addAction(QStringLiteral("&Tip of the Day"));
    tip->setObjectName(QStringLiteral("tipOfTheDay"));
    connect(tip, &QAction::triggered, this, [this] {
        TeskTipOfTheDay dialog(app_.GetSettings(), this);
        app_.GetPrompts().RunDialog(dialog);
    });
    menu->addSeparator();
    AddCommand(menu, "&About Vimbo", "about", &TeskEditorDlg::OnAbout);
}

void TeskEditorDlg::OnMovieProperties() {
    TeskMoviePropertiesDialog dialog(app_.GetDocument(), app_.GetHelp(), this);
    if (app_.GetPrompts().RunDialog(dialog))
        dialog.Apply(app_.GetDocument());
}

void TeskEditorDlg::OnLinkURL() {
    TeskLinkURLDialog dialog(app_.GetDocument(), app_.GetHelp(), this);
    if (app_.GetPrompts().RunDialog(dialog))
        dialog.Apply(app_.GetDocument());
}

void TeskEditorDlg::OnFitToObject() {
    app_.GetDocument().FitToObject();
}

void TeskEditorDlg::EditMovieObject(bool foreground) {
    TeskFile& document = app_.GetDocument();
    TeskObjectDialog dialog(
        foreground ? document.GetForegroundObject() : document.GetBackgroundObject(),
        foreground ? QStringLiteral("Foreground Object Properties")
                   : QStringLiteral("Background Object Properties"),
        TeskObjectContextFor(app_), this);
    if (!app_.GetPrompts().RunDialog(dialog))
        return;
    ZoAutoPtr<TeskObject> object = dialog.TakeResult();
    auto transaction = std::make_unique<TeskFile::Transaction>(
        foreground ? "Edit Foreground Object" : "Edit Background Object");
    document.GetUndoList().Begin(transaction.get());
    if (foreground)
        document.SetForegroundObject(object, transaction.get());
    else
        document.SetBackgroundObject(object, transaction.get());
    document.GetUndoList().Add(transaction);
}

void TeskEditorDlg::OnAbout() {
    TeskAboutDialog dialog(this);
    app_.GetPrompts().RunDialog(dialog);
}

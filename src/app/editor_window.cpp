#include "app/editor_window.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>

#include "app/app_settings.h"
#include "app/context_help.h"
#include "app/editor_app.h"
#include "app/effect_bar.h"
#include "app/mesh_control.h"
#include "app/object_preview.h"
#include "app/pages/effect_property_page.h"
#include "app/preview_pane.h"
#include "document/file.h"
#include "media/resource_manager.h"

namespace {

constexpr int kMinPropertyWidth = 260;
constexpr int kMinPreviewWidth = 200;

QWidget* MakePropertyArea() {
    // The selected effect's property page is shown here.
    auto* area = new QWidget;
    area->setObjectName(QStringLiteral("propertyArea"));
    area->setMinimumWidth(kMinPropertyWidth);
    return area;
}

}  // namespace

TeskEditorDlg::TeskEditorDlg(TeskEditorApp& app, QWidget* parent) : QMainWindow(parent), app_(app) {
    setObjectName(QStringLiteral("mainWindow"));
    effectBar_ = new TeskEffectBar(app_.GetDocument());
    propertyArea_ = MakePropertyArea();
    preview_ = new TeskPreviewPane(app_.GetSettings());
    preview_->setMinimumWidth(kMinPreviewWidth);
    divider_ = new QSplitter(Qt::Horizontal);
    divider_->setObjectName(QStringLiteral("divider"));
    divider_->setChildrenCollapsible(false);
    divider_->addWidget(propertyArea_);
    divider_->addWidget(preview_);
    divider_->setStretchFactor(1, 1);
    divider_->setSizes({kMinPropertyWidth + 40, kDesignedWidth - kMinPropertyWidth - 40});

    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(effectBar_);
    layout->addWidget(divider_, 1);
    setCentralWidget(central);
    CreateMenus();
    TeskInstallContextHelp(*this, app_.GetHelp(), "::/Text/TeskEditorDialog.txt");

    connect(effectBar_, &TeskEffectBar::timingEdited, this, &TeskEditorDlg::ApplyTimeFields);
    connect(effectBar_, &TeskEffectBar::effectChosen, this, &TeskEditorDlg::OnEffectChosen);
    connect(effectBar_, &TeskEffectBar::helpRequested, this, &TeskEditorDlg::OnEffectHelp);

    RestoreWindowSettings();
    AttachToFile(&app_.GetDocument());
}

TeskEditorDlg::~TeskEditorDlg() {
    DetachFromFile();
}

void TeskEditorDlg::OnTeskFileAttach() {
    // A replaced or removed effect leaves the selection until the history
    // makes it valid again, which only the selection's own hints report.
    GetFile()->GetSelection().AddListener(this);
    TeskGetResourceManager().AddTarget(this);
    ShowDocument();
}

void TeskEditorDlg::OnTeskFileDetach() {
    GetFile()->GetSelection().RemoveListener(this);
    TeskGetResourceManager().RemoveTarget(this);
}

void TeskEditorDlg::OnUpdate(ZoEditor::ZoUpdateHintList& hints) {
    if (const ZoResource* picture = ChangedPicture(hints))
        PictureChanged(picture->GetKey().GetName());
    else
        ShowDocument();
}

const ZoResource* TeskEditorDlg::ChangedPicture(const ZoEditor::ZoUpdateHintList& hints) {
    bool reversed = false;
    for (int i = 0; i < hints.GetCount(); ++i) {
        if (const auto* changed =
                dynamic_cast<const ZoResourceChangedUpdateHint*>(hints.GetHint(i, reversed)))
            return changed->GetResource();
    }
    return nullptr;
}

void TeskEditorDlg::PictureChanged(const ZoString& path) {
    // The document is as it was, but what it shows is not.
    preview_->RequestPreview(app_.GetDocument());
    for (TeskObjectPreview* preview : findChildren<TeskObjectPreview*>())
        preview->PictureChanged(path);
    for (TeskMeshCtrl* mesh : findChildren<TeskMeshCtrl*>())
        mesh->PictureChanged(path);
}

void TeskEditorDlg::ShowDocument() {
    TeskFile& document = app_.GetDocument();
    const int selected = document.GetSelectedEffectIndex();
    if (selected >= 0)
        effectBar_->ShowEffect(*document.GetEffect(selected));
    effectBar_->setEnabled(selected >= 0);
    TeskShowPropertyPage(*propertyArea_, selected >= 0 ? document.GetEffect(selected) : nullptr,
                         {document, app_.GetPrompts(), &app_.GetSettings(), &app_.GetHelp()});
    preview_->RequestPreview(document);
    UpdateUndoItems();
    UpdateTitle();
}

void TeskEditorDlg::UpdateTitle() {
    const TeskFile& document = app_.GetDocument();
    const std::filesystem::path name(document.GetFilename());
    setWindowTitle(QStringLiteral("%1[*] - Vimbo")
                       .arg(name.empty() ? QStringLiteral("Untitled")
                                         : QString::fromStdString(name.filename().string())));
    setWindowModified(document.IsModified());
}

void TeskEditorDlg::ApplyTimeFields() {
    TeskFile& document = app_.GetDocument();
    const int selected = document.GetSelectedEffectIndex();
    if (selected < 0)
        return;
    TeskEffect& effect = *document.GetEffect(selected);
    const TeskEffect::Timing timing = effectBar_->GetTiming(effect.GetTiming());
    if (timing == effect.GetTiming()) {
        effectBar_->ShowEffect(effect);  // back to the stored values after a clamp
        return;
    }
    auto transaction = std::make_unique<TeskFile::Transaction>("Edit Effect Time");
    document.GetUndoList().Begin(transaction.get());
    effect.SetTiming(timing, transaction.get());
    document.GetUndoList().Add(transaction);
}

void TeskEditorDlg::OnEffectChosen(int index) {
    TeskFile& document = app_.GetDocument();
    const int selected = document.GetSelectedEffectIndex();
    if (index < 0 || index >= TeskEffect::GetCount() || selected < 0)
        return;
    ZoAutoPtr<TeskEffect> effect;
    TeskEffect::Create(index, effect);
    effect->SetFile(&document);
    effect->CopyFrom(*document.GetEffect(selected));
    auto transaction = std::make_unique<TeskFile::Transaction>("Change Effect");
    document.GetUndoList().Begin(transaction.get());
    document.ReplaceEffect(effect, selected, transaction.get());
    document.GetUndoList().Add(transaction);
}

void TeskEditorDlg::OnEffectHelp() {
    TeskFile& document = app_.GetDocument();
    const int selected = document.GetSelectedEffectIndex();
    if (selected >= 0)
        app_.GetHelp().ShowTopic(document.GetEffect(selected)->GetInfo().helpTopic);
}

void TeskEditorDlg::closeEvent(QCloseEvent* event) {
    if (!app_.SaveModified()) {
        event->ignore();
        return;
    }
    SaveWindowSettings();
    event->accept();
}

void TeskEditorDlg::SaveWindowSettings() {
    TeskWindowPlacement placement;
    const QRect frame = geometry();
    placement.x = frame.x();
    placement.y = frame.y();
    placement.width = frame.width();
    placement.height = frame.height();
    placement.divider = divider_->sizes().value(0);
    TeskWriteWindowPlacement(app_.GetSettings(), kTeskMainWindowSection, placement);
}

void TeskEditorDlg::RestoreWindowSettings() {
    const TeskWindowPlacement placement =
        TeskReadWindowPlacement(app_.GetSettings(), kTeskMainWindowSection);
    if (!placement.HasGeometry()) {
        resize(kDesignedWidth, kDesignedHeight);
        return;
    }
    QRect wanted(placement.x, placement.y, std::max(placement.width, kDesignedWidth),
                 std::max(placement.height, kDesignedHeight));
    // A screen may have gone since: keep the window where it can be seen.
    const QScreen* screen = QGuiApplication::screenAt(wanted.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (screen) {
        const QRect area = screen->availableGeometry();
        wanted.setSize(wanted.size().boundedTo(area.size()));
        wanted.moveLeft(std::clamp(wanted.left(), area.left(), area.right() - wanted.width() + 1));
        wanted.moveTop(std::clamp(wanted.top(), area.top(), area.bottom() - wanted.height() + 1));
    }
    setGeometry(wanted);
    if (placement.divider != TeskWindowPlacement::kNotStored)
        divider_->setSizes({placement.divider, std::max(wanted.width() - placement.divider, 1)});
}

#include "app/morph_mesh_panel.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include "app/mesh_control.h"
#include "document/file.h"
#include "effects/morph_effect.h"

namespace {

QToolButton* MakeZoomButton(const char* name, const char* themeIcon, const QString& fallback,
                            const QString& tip) {
    auto* button = new QToolButton;
    button->setObjectName(QString::fromUtf8(name));
    button->setIcon(QIcon::fromTheme(QString::fromUtf8(themeIcon)));
    if (button->icon().isNull())
        button->setText(fallback);
    button->setToolTip(tip);
    return button;
}

/// Whether both meshes cut their objects alike: every triangle of every
/// point set in the same place (which covers the points and the diagonals).
bool SameMesh(const TeskTriangulation& a, const TeskTriangulation& b) {
    if (a.GetPointSetCount() != b.GetPointSetCount() ||
        a.GetTriangleCount() != b.GetTriangleCount())
        return false;
    for (int32_t set = 0; set < a.GetPointSetCount(); ++set) {
        for (int32_t i = 0; i < a.GetTriangleCount(); ++i) {
            TeskPoint2D a0, a1, a2, b0, b1, b2;
            a.GetTriangle(i, set, a0, a1, a2);
            b.GetTriangle(i, set, b0, b1, b2);
            if (a0 != b0 || a1 != b1 || a2 != b2)
                return false;
        }
    }
    return true;
}

}  // namespace

TeskMorphMeshPanel::TeskMorphMeshPanel(TeskFile& file, TeskMorphEffect& effect, QWidget* parent)
    : QWidget(parent), file_(file), effect_(effect) {
    setObjectName(QStringLiteral("morphMeshPanel"));
    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    const char* captions[] = {"Start object mesh", "End object mesh"};
    for (int set = 0; set < 2; ++set) {
        meshes_[set] = new TeskMeshCtrl;
        meshes_[set]->setObjectName(set == 0 ? QStringLiteral("startMesh")
                                             : QStringLiteral("endMesh"));
        layout->addWidget(new QLabel(QString::fromUtf8(captions[set])), 0, set);
        layout->addWidget(meshes_[set], 1, set);
        layout->setColumnStretch(set, 1);
        connect(meshes_[set], &TeskMeshCtrl::meshChanged, this, &TeskMorphMeshPanel::StoreMesh);
        connect(meshes_[set], &TeskMeshCtrl::zoomChanged, this,
                &TeskMorphMeshPanel::UpdateZoomButtons);
    }
    layout->setRowStretch(1, 1);
    zoomIn_ = MakeZoomButton("zoomIn", "zoom-in", QStringLiteral("+"), tr("Zoom In"));
    zoomOut_ = MakeZoomButton("zoomOut", "zoom-out", QStringLiteral("\u2212"), tr("Zoom Out"));
    connect(zoomIn_, &QToolButton::clicked, this, [this] { meshes_[0]->ZoomIn(); });
    connect(zoomOut_, &QToolButton::clicked, this, [this] { meshes_[0]->ZoomOut(); });
    auto* zoom = new QHBoxLayout;
    zoom->addStretch(1);
    zoom->addWidget(zoomIn_);
    zoom->addWidget(zoomOut_);
    layout->addLayout(zoom, 2, 0, 1, 2);
    UpdateZoomButtons();
    AttachToFile(&file_);
    Reload();
}

TeskMorphMeshPanel::~TeskMorphMeshPanel() {
    DetachFromFile();
}

void TeskMorphMeshPanel::OnUpdate(ZoEditor::ZoUpdateHintList&) {
    Reload();
}

void TeskMorphMeshPanel::Reload() {
    working_ = effect_.GetTriangulation().Clone();
    const ZoSize movie{file_.GetWidth(), file_.GetHeight()};
    const COLORREF background = file_.GetBackgroundColour();
    meshes_[0]->SetMesh(working_.get(), 0, effect_.GetStartObject(), meshes_[1], movie, background);
    meshes_[1]->SetMesh(working_.get(), 1, effect_.GetEndObject(), meshes_[0], movie, background);
}

void TeskMorphMeshPanel::StoreMesh() {
    // A drag that moved nothing (a refused move, a root corner) is no change.
    if (SameMesh(*working_, effect_.GetTriangulation()))
        return;
    ZoAutoPtr<TeskTriangulation> mesh = working_->Clone();
    auto transaction = std::make_unique<TeskFile::Transaction>(kEditMeshName);
    file_.GetUndoList().Begin(transaction.get());
    effect_.SetTriangulation(mesh, transaction.get());
    file_.GetUndoList().Add(transaction);
}

void TeskMorphMeshPanel::UpdateZoomButtons() {
    zoomIn_->setEnabled(meshes_[0]->CanZoomIn());
    zoomOut_->setEnabled(meshes_[0]->CanZoomOut());
}

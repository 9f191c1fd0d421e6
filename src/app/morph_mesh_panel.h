#pragma once
// The mesh editing area of the morph page: the start object with its points
// beside the end object with theirs, linked, with the zoom buttons. It edits
// a working copy of the effect's mesh and stores every change in the effect
// as one undoable step; it follows the document, so undo and redo show at
// once.
#include <QWidget>

#include "document/file_observer.h"
#include "geometry/triangulation.h"

class QToolButton;
class TeskFile;
class TeskMeshCtrl;
class TeskMorphEffect;

class TeskMorphMeshPanel final : public QWidget, public TeskFileObserver {
    Q_OBJECT
  public:
    /// The name of a mesh change in the history.
    static constexpr const char* kEditMeshName = "Edit Morph Mesh";

    /// Edits the mesh of `effect`, which lives in `file`.
    TeskMorphMeshPanel(TeskFile& file, TeskMorphEffect& effect, QWidget* parent = nullptr);
    ~TeskMorphMeshPanel() override;

    /// The controls of the start (0) and end (1) objects.
    TeskMeshCtrl* GetMeshCtrl(int pointSet) const noexcept { return meshes_[pointSet]; }
    /// Shows the effect's mesh and objects again.
    void Reload();

  protected:
    void OnUpdate(ZoEditor::ZoUpdateHintList& hints) override;

  private:
    void StoreMesh();
    void UpdateZoomButtons();

    TeskFile& file_;
    TeskMorphEffect& effect_;
    ZoAutoPtr<TeskTriangulation> working_;
    TeskMeshCtrl* meshes_[2];
    QToolButton* zoomIn_;
    QToolButton* zoomOut_;
};

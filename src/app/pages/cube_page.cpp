#include <QButtonGroup>
#include <QComboBox>
#include <QHBoxLayout>
#include <QTabBar>
#include <QToolButton>

#include "app/angle_dial.h"
#include "app/edit_batch.h"
#include "app/object_slot.h"
#include "app/pages/page_makers.h"
#include "app/slider_field.h"
#include "effects/cube_effect.h"

namespace {

using Cube = TeskCubeEffect;

// The direction buttons in their order, which is also their stored code.
struct DirectionButton {
    Qt::ArrowType arrow;
    const char* tip;
};
constexpr DirectionButton kDirections[] = {
    {Qt::UpArrow, "Up Direction"},
    {Qt::DownArrow, "Down Direction"},
    {Qt::LeftArrow, "Left Direction"},
    {Qt::RightArrow, "Right Direction"},
};

class TeskCubeEffectPropertyPage final : public TeskEffectPropertyPage {
  public:
    TeskCubeEffectPropertyPage(Cube& effect, const TeskPageContext& context, QWidget* parent)
        : TeskEffectPropertyPage(effect, context, Cube::kPropertiesName,
                                 "::/Text/CubeEffectDialog.txt", parent),
          effect_(effect) {
        auto* faceArea = new QVBoxLayout;
        tabs_ = new QTabBar;
        for (const char* name : Cube::kFaceNames)
            tabs_->addTab(QString::fromUtf8(name));
        faceArea->addWidget(tabs_);
        faceArea->addWidget(MakeFaceSlot(), 1);
        sameAs_ = new QComboBox;
        faceArea->addWidget(sameAs_);
        faceArea->addWidget(MakeDirectionButtons(), 0, Qt::AlignHCenter);
        ObjectRow()->addLayout(faceArea, 1);
        for (QWidget* faceControl :
             {static_cast<QWidget*>(sameAs_), directions_.front()->parentWidget()})
            Watch(faceControl);
        connect(tabs_, &QTabBar::currentChanged, this, &TeskCubeEffectPropertyPage::ShowFace);

        rotateX_ = new TeskAngleDial;
        rotateZ_ = new TeskAngleDial;
        rotateAxis_ = new TeskAngleDial;
        scale_ = new TeskSliderField(1, 200, "Small", "Large");
        AddSetting("Rotate &X", rotateX_);
        AddSetting("Rotate &Z", rotateZ_);
        AddSetting("Rotate &Axis", rotateAxis_);
        AddSetting("&Scale", scale_);
        AddGridControl(effect);
        AddLightingControl(effect);
        Start();
    }

  private:
    QWidget* MakeFaceSlot() {
        Cube& effect = effect_;
        const int32_t& face = face_;
        return MakeObjectSlot(
            [&effect, &face] { return effect.GetShownObject(face); },
            // The face gets an object of its own and shows it.
            [&effect, &face](ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* t) {
                effect.SetFaceObject(face, object, t);
                effect.SetFaceSameAs(face, Cube::kOwnObject, t);
            },
            "Cube Object Properties", "&Change...", {}, true);
    }

    QWidget* MakeDirectionButtons() {
        auto* box = new QWidget;
        auto* row = new QHBoxLayout(box);
        row->setContentsMargins(0, 0, 0, 0);
        auto* group = new QButtonGroup(box);
        for (const DirectionButton& direction : kDirections) {
            auto* button = new QToolButton;
            button->setArrowType(direction.arrow);
            button->setToolTip(QString::fromUtf8(direction.tip));
            button->setCheckable(true);
            group->addButton(button);
            row->addWidget(button);
            directions_.push_back(button);
        }
        return box;
    }

    void ShowFace(int face) {
        // Edits of the face left behind belong to it.
        if (IsApplyPending())
            Apply();
        face_ = face;
        Reload();
    }

    void LoadControls() override {
        const Cube::CubeFace& face = effect_.GetFace(face_);
        tabs_->setCurrentIndex(face_);
        sameAs_->clear();
        for (int32_t other = 0; other < Cube::kFaceCount; ++other) {
            if (other != face_ && effect_.GetFace(other).object)
                sameAs_->addItem(QString::fromUtf8(Cube::kSameAsPrefix) +
                                     QString::fromUtf8(Cube::kFaceNames[other]),
                                 other);
        }
        // While the face has an object of its own, it shows no borrowed one.
        sameAs_->setCurrentIndex(face.object ? -1 : sameAs_->findData(face.sameAs));
        sameAs_->setVisible(face_ != Cube::kTop);
        for (size_t i = 0; i < directions_.size(); ++i)
            directions_[i]->setChecked(static_cast<int32_t>(i) == face.objectDirection);
        rotateX_->SetAngle(effect_.GetRotateX());
        rotateZ_->SetAngle(effect_.GetRotateZ());
        rotateAxis_->SetAngle(effect_.GetRotateAxis());
        scale_->SetValue(effect_.GetScaleSize());
    }

    int32_t ShownDirection(int32_t stored) const {
        for (size_t i = 0; i < directions_.size(); ++i) {
            if (directions_[i]->isChecked())
                return static_cast<int32_t>(i);
        }
        return stored;
    }

    int32_t ShownSameAs(const Cube::CubeFace& face) const {
        if (face_ == Cube::kTop || (face.object && sameAs_->currentIndex() < 0))
            return face.sameAs;
        return sameAs_->currentIndex() < 0 ? Cube::kOwnObject : sameAs_->currentData().toInt();
    }

    void ApplyControls(TeskEditBatch& batch) override {
        Cube& e = effect_;
        const Cube::CubeFace& face = e.GetFace(face_);
        if (const int32_t sameAs = ShownSameAs(face); sameAs != face.sameAs) {
            batch.Note(Cube::kSameAsName);
            e.SetFaceSameAs(face_, sameAs, batch.GetTransaction());
        }
        if (const int32_t direction = ShownDirection(face.objectDirection);
            direction != e.GetFace(face_).objectDirection) {
            batch.Note(Cube::kDirectionName);
            e.SetFaceDirection(face_, direction, batch.GetTransaction());
        }
        batch.Set(e, &Cube::SetRotateX, rotateX_->GetAngle(), e.GetRotateX(), Cube::kRotateXName);
        batch.Set(e, &Cube::SetRotateZ, rotateZ_->GetAngle(), e.GetRotateZ(), Cube::kRotateZName);
        batch.Set(e, &Cube::SetRotateAxis, rotateAxis_->GetAngle(), e.GetRotateAxis(),
                  Cube::kRotateAxisName);
        batch.Set(e, &Cube::SetScaleSize, scale_->GetValue(), e.GetScaleSize(),
                  Cube::kScaleSizeName);
    }

    Cube& effect_;
    int32_t face_ = Cube::kTop;
    QTabBar* tabs_;
    QComboBox* sameAs_;
    std::vector<QToolButton*> directions_;
    TeskAngleDial* rotateX_;
    TeskAngleDial* rotateZ_;
    TeskAngleDial* rotateAxis_;
    TeskSliderField* scale_;
};

}  // namespace

TeskPagePtr TeskMakePage(TeskCubeEffect& effect, const TeskPageContext& context, QWidget* parent) {
    return std::make_unique<TeskCubeEffectPropertyPage>(effect, context, parent);
}

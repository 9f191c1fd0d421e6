#pragma once
#include "effects/mesh_effect.h"
#include "geometry/triangulation.h"

class TeskEditGridTriangulation;

/// Warps a start object into an end object through one hand-edited mesh
/// whose every point has a place on each object (point set 0 on the start
/// object, 1 on the end object), fading the end object in over the start
/// object; the last frame shows the end object whole. With "Return to start"
/// it runs back after holding the end object.
class TeskMorphEffect : public TeskMeshEffect {
  public:
    class MorphState : public State {
      public:
        MorphState();
        MorphState(const MorphState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> startObject;
        ZoAutoPtr<TeskObject> endObject;
        /// Never null; an editable grid unless code set another kind.
        ZoAutoPtr<TeskTriangulation> triangulation;
        bool returnToStart = false;
        int32_t returnHoldTime = 0;  // milliseconds the end object is held before running back
    };

    /// Names of the undoable changes the property page makes.
    static constexpr const char* kReturnToStartName = "Edit Morph Return to Start";
    static constexpr const char* kReturnHoldTimeName = "Edit Morph Return Hold Time";
    static constexpr const char* kPropertiesName = "Edit Morph Properties";
    static constexpr const char* kReverseName = "Reverse morph";

    /// Depths in every frame: the mask that keeps both meshes inside the
    /// object rectangle, then the start mesh, the end mesh above it, and the
    /// whole end object above both.
    static constexpr int32_t kMaskDepth = 100;

    TeskMorphEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const MorphState& GetMorphState() const noexcept {
        return static_cast<const MorphState&>(GetState());
    }
    TeskObject* GetStartObject() const noexcept { return GetMorphState().startObject.get(); }
    TeskObject* GetEndObject() const noexcept { return GetMorphState().endObject.get(); }
    const TeskTriangulation& GetTriangulation() const noexcept {
        return *GetMorphState().triangulation;
    }
    /// The mesh as an editable grid, or null for another kind.
    const TeskEditGridTriangulation* GetEditGrid() const noexcept;
    bool GetReturnToStart() const noexcept { return GetMorphState().returnToStart; }
    int32_t GetReturnHoldTime() const noexcept { return GetMorphState().returnHoldTime; }

    void SetStartObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetEndObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    /// Takes `triangulation`; a null one changes nothing.
    void SetTriangulation(ZoAutoPtr<TeskTriangulation>& triangulation,
                          ZoEditor::ZoEditTransaction* transaction);
    void SetReturnToStart(bool returnToStart, ZoEditor::ZoEditTransaction* transaction);
    void SetReturnHoldTime(int32_t milliseconds, ZoEditor::ZoEditTransaction* transaction);
    /// Exchanges the objects and every point's start and end places, as one change.
    void Reverse(ZoEditor::ZoEditTransaction* transaction);

    /// Depth of the whole end object on the last step: above the start mesh
    /// (from kMaskDepth + 1, one depth per triangle) and the end mesh after it.
    int32_t GetEndObjectDepth() const noexcept;

    /// One frame per effect frame: both meshes on the travelling corners
    /// inside the mask, or on the last step the end object alone; with
    /// "Return to start" the hold repeats the turning frame. Scene 0 must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;
    /// Loads the built-in preset into an editable grid first, so that the
    /// effect chooser shows a morph worth seeing.
    void CompileAlone(TeskSWFMovie& movie) override;

    int GetObjectCount() const override { return 2; }
    /// A grid that does not hold exactly the two point sets counts as a
    /// failed read, like short data: the whole state takes its defaults.
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Slot 1 is the end object, every other index the start object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;

  private:
    MorphState& MutableState() noexcept { return static_cast<MorphState&>(GetState()); }
};

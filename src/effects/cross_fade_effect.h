#pragma once
#include "effects/effect.h"

/// Shows a start object and fades an end object in over it; with "Return to
/// Start" the end object fades in and out again, pausing at full strength.
class TeskCrossFadeEffect : public TeskEffect {
  public:
    class CrossFadeState : public State {
      public:
        CrossFadeState();
        CrossFadeState(const CrossFadeState& other);
        ZoAutoPtr<State> Clone() const override;
        void VisitFields(TeskFieldVisitor& visitor) override;

        ZoAutoPtr<TeskObject> startObject;
        ZoAutoPtr<TeskObject> endObject;
        bool returnToStart = false;
        int32_t returnHold = 0;  // milliseconds at the turning point
    };

    /// Names of the undoable changes the property page makes.
    static constexpr const char* kReturnToStartName = "Cross Fade Return to Start";
    static constexpr const char* kReturnHoldName = "Cross Fade Return Hold Time";
    static constexpr const char* kPropertiesName = "Cross Fade Properties";
    static constexpr const char* kStartObjectName = "Edit start object";
    static constexpr const char* kEndObjectName = "Edit end object";
    static constexpr const char* kReverseName = "Reverse Cross Fade";

    /// Depths of the two objects in every frame.
    static constexpr int kStartDepth = 100;
    static constexpr int kEndDepth = 101;

    TeskCrossFadeEffect();
    static const TeskEffectInfo& Info();
    const TeskEffectInfo& GetInfo() const override { return Info(); }

    const CrossFadeState& GetCrossFadeState() const noexcept {
        return static_cast<const CrossFadeState&>(GetState());
    }
    TeskObject* GetStartObject() const noexcept { return GetCrossFadeState().startObject.get(); }
    TeskObject* GetEndObject() const noexcept { return GetCrossFadeState().endObject.get(); }
    bool GetReturnToStart() const noexcept { return GetCrossFadeState().returnToStart; }
    int32_t GetReturnHold() const noexcept { return GetCrossFadeState().returnHold; }
    void SetStartObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetEndObject(ZoAutoPtr<TeskObject>& object, ZoEditor::ZoEditTransaction* transaction);
    void SetReturnToStart(bool returnToStart, ZoEditor::ZoEditTransaction* transaction);
    void SetReturnHold(int32_t milliseconds, ZoEditor::ZoEditTransaction* transaction);
    /// Swaps clones of the start and end objects, as one change.
    void Reverse(ZoEditor::ZoEditTransaction* transaction);

    /// One frame per effect frame with the start object at depth 100 and the
    /// end object above it at the fade's alpha; with "Return to Start" the
    /// return hold repeats the middle frame. Scene 0 must exist.
    void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) override;

    int GetObjectCount() const override { return 2; }
    void Read(ZoFolderFile& file) override;
    void Write(ZoFolderFile& file) const override;

  protected:
    /// Slot 1 is the end object, every other index the start object.
    ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const override;
};

/// The end object's alpha in frame `frame` of `frameCount`: 0 to 1 across
/// the frames, or up to 1 at the middle frame and back with `returnToStart`.
/// Too few frames to fade over give 0.
double TeskCrossFadeAlpha(int32_t frame, int32_t frameCount, bool returnToStart) noexcept;

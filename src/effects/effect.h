#pragma once
// An effect turns the movie's time span into a run of frames that carry one
// object into another. Everything an effect stores lives in its State, so
// cloning, copying, undo and storage all work on states alone.
#include <cstdint>
#include <utility>

#include "effects/effect_host.h"
#include "effects/registered_guid_object.h"
#include "platform/zo_auto_ptr.h"
#include "platform/zo_guid.h"
#include "platform/zo_rect.h"
#include "platform/zo_string.h"

namespace ZoEditor {
class ZoEditTransaction;
}
class TeskEffect;
class TeskFieldVisitor;
class TeskObject;
class TeskSWFMovie;
class ZoFolderFile;

/// One registered effect type.
struct TeskEffectInfo {
    ZoGuid guid;
    /// A new default effect of the type, not yet in a document.
    ZoAutoPtr<TeskEffect> (*factory)() = nullptr;
    int32_t nameId = 0;
    /// The display name in the effect chooser ("Cross Fade").
    ZoString name;
    /// Index in the effect icon strip.
    int32_t iconIndex = 0;
    ZoString helpTopic;
};

/// Deep copy of an object slot; an empty slot stays empty.
ZoAutoPtr<TeskObject> TeskCloneObject(const ZoAutoPtr<TeskObject>& object);

class TeskEffect : public ZoRegisteredGUIDObject<TeskEffect, TeskEffectInfo> {
  public:
    /// Stored and copied with the state; nothing depends on it.
    struct ReservedBlock {
        uint32_t reservedFlags = 0x00001111;
        ZoRect reservedRect{0, 0, 100, 100};
        friend bool operator==(const ReservedBlock&, const ReservedBlock&) = default;
    };

    /// Length and hold times, in milliseconds.
    struct Timing {
        int32_t timingReserved = 0;
        int32_t startTime = 0;
        int32_t endTime = 2000;
        int32_t startHold = 0;   // the first frame is held this long
        int32_t finishHold = 0;  // the last frame is held this long
        int32_t GetLength() const noexcept { return endTime - startTime; }
        friend bool operator==(const Timing&, const Timing&) = default;
    };

    /// The parameter block common to all effects; each effect derives its own.
    class State {
      public:
        State() = default;
        State& operator=(const State&) = delete;
        virtual ~State() = default;

        /// A deep heap copy of the full concrete state.
        virtual ZoAutoPtr<State> Clone() const = 0;
        /// The reserved block and the `timing` group; derived states visit
        /// these first, then their own fields.
        virtual void VisitFields(TeskFieldVisitor& visitor);

        ReservedBlock reservedBlock;
        Timing timing;

      protected:
        State(const State&) = default;
    };

    TeskEffect(const TeskEffect&) = delete;
    TeskEffect& operator=(const TeskEffect&) = delete;
    virtual ~TeskEffect();

    using ZoRegisteredGUIDObject::GetInfo;
    /// The type's registry data (also for types not registered yet).
    virtual const TeskEffectInfo& GetInfo() const = 0;

    /// A new effect of the same type holding a deep copy of this state, in
    /// the same document.
    virtual void Clone(ZoAutoPtr<TeskEffect>& out) const;
    /// Appends the effect's frames to scene 0 of `movie`.
    virtual void Compile(TeskSWFMovie& movie, bool ignoreMovieClipOffset) = 0;
    /// Adds a scene to `movie` and compiles this effect alone into it.
    virtual void CompileAlone(TeskSWFMovie& movie);

    /// The effect's record in its own unnamed folder, its base's record
    /// first. Unreadable parts fall back to defaults; only failures other
    /// than short or missing data propagate.
    virtual void Read(ZoFolderFile& file);
    virtual void Write(ZoFolderFile& file) const;

    /// Exchanges the state with `other` when `other` holds a state of this
    /// effect's own class; otherwise does nothing.
    void SwapState(ZoAutoPtr<State>& other);
    /// Takes timing, the reserved block and clones of the shared object
    /// slots from `other`, without undo.
    virtual void CopyFrom(const TeskEffect& other);

    virtual int GetObjectCount() const = 0;
    /// The object in slot `index` (may be null).
    TeskObject* GetObject(int index) const;
    /// Takes `object` into slot `index`, without undo.
    void SetObject(ZoAutoPtr<TeskObject>& object, int index);
    /// Takes `object` into slot `index` with the setter pattern.
    void SetObject(ZoAutoPtr<TeskObject>& object, int index,
                   ZoEditor::ZoEditTransaction* transaction);

    State& GetState() noexcept { return *state_; }
    const State& GetState() const noexcept { return *state_; }

    const ReservedBlock& GetReservedBlock() const noexcept { return state_->reservedBlock; }
    void SetReservedBlock(const ReservedBlock& block, ZoEditor::ZoEditTransaction* transaction);
    const Timing& GetTiming() const noexcept { return state_->timing; }
    void SetTiming(const Timing& timing, ZoEditor::ZoEditTransaction* transaction);
    /// Sets the timing to (0, length), as the editor always does.
    void SetEffectTime(int32_t length, ZoEditor::ZoEditTransaction* transaction);

    /// Frames the effect makes at `frameRate`, truncating.
    int32_t GetFrameCount(int32_t frameRate) const noexcept;

    TeskEffectHost* GetFile() const noexcept { return file_; }
    void SetFile(TeskEffectHost* file) noexcept { file_ = file; }

    /// With a transaction, records a swap to `newState` in it and queues a
    /// "state changed" hint for the document's observers; without one,
    /// swaps `newState` in directly and tells nobody.
    void ModifyState(ZoAutoPtr<State>& newState, ZoEditor::ZoEditTransaction* transaction);

    /// The rectangle, in twips, in which the effect draws its objects: the
    /// movie, or the movie centred on the origin when the document asks for
    /// a movie-clip offset and the caller does not ignore it.
    ZoRect GetMovieRect(int32_t widthPixels, int32_t heightPixels,
                        bool ignoreMovieClipOffset) const;

  protected:
    /// Takes the new effect's default state.
    explicit TeskEffect(ZoAutoPtr<State> state);

    /// The holder of slot `index` in `state`, a state of this effect's class.
    virtual ZoAutoPtr<TeskObject>& ObjectSlot(State& state, int index) const = 0;
    /// Replaces the whole state by the type's defaults (failed reads).
    void ResetState();

    /// The setter pattern: `change` edits the live state without a
    /// transaction, or a clone that is then swapped in through ModifyState.
    template <typename S, typename Change>
    void ChangeState(Change&& change, ZoEditor::ZoEditTransaction* transaction) {
        if (!transaction) {
            change(static_cast<S&>(*state_));
            return;
        }
        ZoAutoPtr<State> copy = state_->Clone();
        change(static_cast<S&>(*copy));
        ModifyState(copy, transaction);
    }
    template <typename S, typename V>
    void SetStateField(V S::*field, const V& value, ZoEditor::ZoEditTransaction* transaction) {
        ChangeState<S>([&](S& state) { state.*field = value; }, transaction);
    }

  private:
    TeskEffectHost* file_ = nullptr;
    ZoAutoPtr<State> state_;
};

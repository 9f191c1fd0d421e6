#pragma once
// The one document of the application: a movie made of an ordered list of
// effects, the movie's settings and two movie-wide objects. Every change
// with a transaction is undoable and reaches the observers as hints when the
// transaction is committed, undone or redone; a change without one is made
// directly and tells nobody.
#include <cstdint>
#include <functional>
#include <vector>

#include "document/editor_undo_list.h"
#include "document/publish_settings.h"
#include "editor/selection.h"
#include "effects/effect.h"
#include "effects/effect_host.h"
#include "platform/zo_auto_ptr.h"
#include "platform/zo_colour.h"
#include "platform/zo_string.h"

class TeskFileObserver;
class TeskFieldVisitor;
class TeskObject;

/// How the published movie fills the browser area.
enum TeskResizeMode : int32_t {
    kTeskFixedSize = 0,
    kTeskResizeToFill = 1,
    kTeskResizeKeepAspect = 2,
};

class TeskFile final : public TeskEffectHost {
  public:
    /// The address a new document's link opens.
    static constexpr const char* kDefaultLinkURL = "https://vimbo.kestrane.com/";

    /// Base of the document's state; the document only ever holds a RealState.
    class State {
      public:
        virtual ~State() = default;
    };

    /// The movie settings and the two movie-wide objects. Copies are deep.
    class RealState : public State {
      public:
        RealState() = default;
        RealState(const RealState& other);
        RealState& operator=(const RealState&) = delete;

        void VisitFields(TeskFieldVisitor& visitor);

        int32_t width = 182;  // pixels
        int32_t height = 202;
        int32_t frameRate = 12;
        COLORREF backgroundColour = 0xFFFFFF;
        int32_t resizeMode = kTeskFixedSize;
        bool disableRightClick = true;
        bool clipToMovieSize = false;
        TeskPublishSettings publishSettings;
        ZoAutoPtr<TeskObject> foregroundObject;  // above every effect
        ZoAutoPtr<TeskObject> backgroundObject;  // behind every effect
        bool linkEnabled = false;
        ZoString linkURL = kDefaultLinkURL;
        ZoString linkTarget = "_blank";
    };

    using Transaction = ZoEditor::ZoEditTransaction;

    /// One default wave effect, selected.
    TeskFile();
    TeskFile(const TeskFile&) = delete;
    TeskFile& operator=(const TeskFile&) = delete;
    ~TeskFile();

    // Effects. Indices are unchecked: callers keep 0 <= index < count
    // (index == count where an insertion position is asked for).
    int GetEffectCount() const noexcept { return static_cast<int>(effects_.size()); }
    TeskEffect* GetEffect(int index) const;
    /// -1 when `effect` is not in the document.
    int GetEffectIndex(const TeskEffect* effect) const noexcept;
    /// Index of the first selected effect, -1 if none.
    int GetSelectedEffectIndex() const noexcept;
    /// Takes `effect` and inserts it before position `index`.
    void InsertEffect(ZoAutoPtr<TeskEffect>& effect, int index, Transaction* transaction);
    /// Removes the effect at `index`; without a transaction it is deleted.
    void RemoveEffect(int index, Transaction* transaction);
    /// Moves the effect at `index` out of the document into `out`, without undo.
    void TakeEffect(ZoAutoPtr<TeskEffect>& out, int index);
    /// Exchanges the effect at `index` with `effect`, which receives the old one.
    void ReplaceEffect(ZoAutoPtr<TeskEffect>& effect, int index, Transaction* transaction);

    ZoEditor::ZoSelection<TeskEffect>& GetSelection() noexcept { return selection_; }
    /// Makes sure the selection is one effect of the document (the first when
    /// it was not), or empty when there are none; selection hints are
    /// delivered before it returns.
    void ValidateSelection();

    // Movie settings.
    const RealState& GetState() const noexcept { return *state_; }
    int32_t GetWidth() const noexcept { return state_->width; }
    int32_t GetHeight() const noexcept { return state_->height; }
    int32_t GetFrameRate() const noexcept { return state_->frameRate; }
    COLORREF GetBackgroundColour() const noexcept { return state_->backgroundColour; }
    int32_t GetResizeMode() const noexcept { return state_->resizeMode; }
    bool GetDisableRightClick() const noexcept { return state_->disableRightClick; }
    bool GetClipToMovieSize() const noexcept { return state_->clipToMovieSize; }
    TeskObject* GetForegroundObject() const noexcept { return state_->foregroundObject.get(); }
    TeskObject* GetBackgroundObject() const noexcept { return state_->backgroundObject.get(); }
    bool GetLinkEnabled() const noexcept { return state_->linkEnabled; }
    const ZoString& GetLinkURL() const noexcept { return state_->linkURL; }
    const ZoString& GetLinkTarget() const noexcept { return state_->linkTarget; }
    /// For direct modification: publish settings are never undoable.
    TeskPublishSettings& GetPublishSettings() noexcept { return state_->publishSettings; }

    void SetWidth(int32_t pixels, Transaction* transaction);
    void SetHeight(int32_t pixels, Transaction* transaction);
    void SetFrameRate(int32_t framesPerSecond, Transaction* transaction);
    void SetBackgroundColour(COLORREF colour, Transaction* transaction);
    void SetResizeMode(int32_t mode, Transaction* transaction);
    void SetDisableRightClick(bool disable, Transaction* transaction);
    void SetClipToMovieSize(bool clip, Transaction* transaction);
    /// The object setters take the object out of the caller's holder.
    void SetForegroundObject(ZoAutoPtr<TeskObject>& object, Transaction* transaction);
    void SetBackgroundObject(ZoAutoPtr<TeskObject>& object, Transaction* transaction);
    void SetLinkEnabled(bool enabled, Transaction* transaction);
    void SetLinkURL(const ZoString& url, Transaction* transaction);
    void SetLinkTarget(const ZoString& target, Transaction* transaction);

    /// Swaps `newState` in (undoably with a transaction, queuing a settings
    /// hint for every observer).
    void ApplyState(ZoAutoPtr<State>& newState, Transaction* transaction);
    /// Exchanges the state with `other` if it is a RealState; otherwise
    /// changes nothing.
    void SwapState(ZoAutoPtr<State>& other);

    // Whole document.
    /// Back to a fresh document: one default wave effect, default settings,
    /// empty history, no file name. Observers are detached meanwhile and
    /// attached again afterwards.
    void New();
    /// Sets the movie to the largest natural width and height of the
    /// effects' objects, as one undoable "Fit To Object"; false (and no
    /// history entry) when no object has a size.
    bool FitToObject();
    bool Load(const char* path);
    bool Save(const char* path);
    void Compile(const char* swfPath);
    bool IsModified() const noexcept { return undoList_.IsModified(); }
    const ZoString& GetFilename() const noexcept { return filename_; }
    void SetFilename(const char* path) { filename_ = path ? path : ""; }
    TeskEditorUndoList& GetUndoList() noexcept { return undoList_; }

    // Observers.
    /// Names every observer as a target of `hint`.
    void NotifyObservers(ZoEditor::ZoUpdateHint& hint) override;
    bool GetOffsetForMovieClip() const override {
        return state_->publishSettings.offsetForMovieClip;
    }
    const std::vector<TeskFileObserver*>& GetObservers() const noexcept { return observers_; }
    /// Detaches every observer (each hears OnTeskFileDetach) and returns them
    /// in attach order, so that a reload can attach them again.
    std::vector<TeskFileObserver*> DetachObservers();
    void AttachObservers(const std::vector<TeskFileObserver*>& observers);

  private:
    friend class TeskFileObserver;
    friend class TeskAddEffectAction;
    friend class TeskRemoveEffectAction;
    friend class TeskReplaceEffectAction;

    void AddObserver(TeskFileObserver* observer);
    void RemoveObserver(TeskFileObserver* observer);

    // The raw list edits the actions are made of; they leave the selection alone.
    void InsertEffectAt(ZoAutoPtr<TeskEffect>& effect, int index);
    ZoAutoPtr<TeskEffect> TakeEffectAt(int index);
    void ExchangeEffectAt(ZoAutoPtr<TeskEffect>& effect, int index);
    /// Performs `action` in `transaction` and queues the effect hint for it.
    void RecordEffectChange(ZoAutoPtr<ZoEditor::ZoEditAction> action, TeskEffect* effect,
                            uint32_t kind, int index, Transaction& transaction);
    /// Queues a hint for the observers in `transaction`.
    void QueueHint(ZoAutoPtr<ZoEditor::ZoUpdateHint> hint, Transaction& transaction);

    /// The setter pattern: `change` edits the live state without a
    /// transaction, or a deep copy that ApplyState swaps in.
    void ChangeState(const std::function<void(RealState&)>& change, Transaction* transaction);
    template <typename V>
    void SetStateField(V RealState::*field, const V& value, Transaction* transaction) {
        ChangeState([&](RealState& state) { state.*field = value; }, transaction);
    }

    // Destroyed in reverse: effects, observers, history, selection, name, state.
    ZoAutoPtr<RealState> state_;
    ZoString filename_;
    ZoEditor::ZoSelection<TeskEffect> selection_;
    TeskEditorUndoList undoList_;
    std::vector<TeskFileObserver*> observers_;
    std::vector<ZoAutoPtr<TeskEffect>> effects_;
};
